// Chains as chain text and as PDB.
#pragma once

#include "polymer/molecule.hpp"

namespace loopwise::write {

/// A line of id x y z for each bead. Coordinates read back to the last bit.
std::string plain_text(const Chain& chain);

/// ATOM records of C-alpha atoms, and CONECT records for all bonds, in a loop also from the last bead to the
/// first, so that viewers draw bonds of any length. Throws std::runtime_error if a number does not fit its
/// columns.
std::string pdb_text(const polymer::NamedChain& chain, bool loop);

} // namespace loopwise::write
