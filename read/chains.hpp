// From residues to chains: which residues belong to a polymer, and which are skipped.
#pragma once

#include "read/residues.hpp"

namespace loopwise::read {

/// The chains of a model, with notes on what was skipped. Atoms with one chain name and one part make a
/// chain.
///
/// Atoms that do not belong to a polymer by what the file says are skipped. If the file does not say, bonds
/// decide:
/// - A residue that is bonded to no other is skipped if it is a HETATM or comes last.
/// - A second part of a chain name is a chain of its own, such as A.2, if some of its residues are bonded and
///   not all are HETATM. Otherwise it is skipped.
/// - If no residue is bonded to another, as in a coarse trace, all residues stay, unless all are HETATM.
std::vector<polymer::NamedChain> chains_of(const Atoms& atoms, const Selection& selection,
                                           std::vector<std::string>& notes);

} // namespace loopwise::read
