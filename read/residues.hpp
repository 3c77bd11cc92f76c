// From atoms to residues.
#pragma once

#include "read/atoms.hpp"

#include <span>

namespace loopwise::read {

using Atoms = std::vector<const FileAtom*>;

/// Consecutive atoms with one residue identifier.
struct Residue {
    std::span<const FileAtom* const> atoms;
    const FileAtom* bead = nullptr; ///< the atom that stands for it
};

/// The residues that have a bead, in the order of the file; they refer to `atoms`. Of alternate locations the
/// bead with the highest occupancy is taken, the first of equals. Throws std::runtime_error if a residue has
/// two such atoms that are not alternate locations.
std::vector<Residue> residues_of(const Atoms& atoms, const Selection& selection);

} // namespace loopwise::read
