// A chain as text for files that other programs read.
#pragma once

#include "polymer/molecule.hpp"

namespace loopwise::write {

/// One line for each bead, id x y z, with as many digits as bring every coordinate back to the last bit.
std::string plain_text(const Chain& chain);

/// ATOM records of C-alpha atoms, with the labels as residue numbers and insertion codes, and CONECT records from each
/// to the next and, for a loop, from the last to the first, so that a viewer draws its sticks however long they are.
/// Throws std::runtime_error where a number does not fit its columns.
std::string pdb_text(const polymer::NamedChain& chain, bool loop);

} // namespace loopwise::write
