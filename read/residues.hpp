// From atoms to residues.
#pragma once

#include "read/atoms.hpp"

namespace loopwise::read {

using Atoms = std::vector<const FileAtom*>;

/// Atoms with one residue identifier.
struct Residue {
    Atoms atoms;
    const FileAtom* bead = nullptr; ///< the atom that stands for it

    const polymer::ResidueId& id() const { return bead->residue; }
};

/// The residues that have a bead, in the order of the file. Consecutive atoms with one identifier are a residue.
/// Atoms with that identifier further on belong to it if they are alternate locations of its own; otherwise they
/// are a residue of the same identifier.
///
/// Of alternate locations the bead with the highest occupancy is taken, the first of equals. Throws
/// std::runtime_error if a residue has two such atoms that are not alternate locations.
std::vector<Residue> residues_of(const Atoms& atoms, const Selection& selection);

} // namespace loopwise::read
