// From residues to chains: what belongs to a polymer, and what is left out.
#pragma once

#include "read/residues.hpp"

namespace loopwise::read {

/// The chains of a model, with a note for what was left out. Atoms with one chain name and one part make a chain.
///
/// Atoms that the file calls no polymer are left out. Where it says neither, bonds decide:
/// - A single residue that is bonded to none is left out if it is a HETATM, or if it comes last.
/// - A second part of a chain name is a chain of its own if some of its residues are bonded and not all are HETATM.
/// - If no residue is bonded to another, as in a coarse trace, all stay, unless all are HETATM.
std::vector<polymer::NamedChain> chains_of(const Atoms& atoms, const Selection& selection,
                                           std::vector<std::string>& notes);

} // namespace loopwise::read
