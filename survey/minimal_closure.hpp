// The minimally interfering closure.
#pragma once

#include "src/closure/closures.hpp"

#include <array>

namespace loopwise::survey {

/// The nearest way out of the convex hull of a chain: the unit normal of the nearest face, and the distance to it.
struct WayOut {
    PointR3 direction{};
    double distance = 0;
};

/// From the first bead, and from the last. Beads in a plane are on the surface.
std::array<WayOut, 2> ways_out(const Chain& chain);

/// Closes the chain where that interferes least with it (Tubiana, Orlandini and Micheletti, "Probing the entanglement
/// and locating knots in ring polymers: a comparative study of different arc closure schemes", Prog. Theor. Phys.
/// Suppl. 191, 2011): by a straight line if the ends are nearer to each other than both together to the surface of the
/// convex hull, otherwise by straight lines out of the hull and an arc far outside it.
closure::Closing close_minimally(Chain& chain);

} // namespace loopwise::survey
