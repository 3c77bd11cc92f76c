// From residues to chains: which residues belong to a polymer, and which are skipped.
#pragma once

#include "read/residues.hpp"

namespace loopwise::read {

/// The chains of a model, with notes on what was decided. Atoms with one chain name and one part make a piece.
///
/// Atoms that do not belong to a polymer by what the file says are skipped. If the file does not say, bonds
/// decide:
/// - A residue of the first piece that is bonded to no other is skipped if it is a HETATM or comes last. If no
///   residue is bonded to another, as in a coarse trace, all stay, unless all are HETATM.
/// - A piece ends where the numbers begin again without a bond.
/// - Of a further piece of a chain name the residues that are bonded to each other and not all HETATM continue the
///   chain if their numbers go on and their segment is the same. Otherwise they are a chain of their own, such as
///   A.2. Numbers of chains without a name must leave enough out to span the gap, unless there is a bond.
/// - Its other residues belong to the chain before them if they are bonded to it where their numbers say, or are no
///   HETATM and lie in a gap. Otherwise they are skipped.
std::vector<polymer::NamedChain> chains_of(const Atoms& atoms, const Selection& selection,
                                           std::vector<std::string>& notes);

} // namespace loopwise::read
