// Random paths of missing residues.
#pragma once

#include "polymer/bonds.hpp"
#include "survey/closure_rng.hpp"

namespace loopwise::survey {

/// Beads of more missing residues are not drawn: such a stretch is a domain and no random path.
inline constexpr std::size_t most_path_beads = 80;

/// How many beads a path across the gap has: the residue numbers that are left out. If the numbers leave out fewer than
/// bonds of the usual length need to reach the other side, or none, the path has twice the bonds that it needs.
std::size_t path_beads(const polymer::OddBond& gap, double usual_bond);

/// Appends a path from one place to another, without its ends, in beads + 1 steps of the usual bond; if these do not
/// reach the other side, in longer steps that make the path twice as long as the gap. An arc of a circle
/// is folded at random, again and again, which makes all such paths equally likely (Alvarado, Calvo and Millett, "The
/// generation of random equilateral polygons", J. Stat. Phys. 143, 2011). The rest of the chain is not avoided.
void append_path(Chain& chain, const PointR3& from, const PointR3& to, std::size_t beads, double usual_bond,
                 ClosureRng rng);

} // namespace loopwise::survey
