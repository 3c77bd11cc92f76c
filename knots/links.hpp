// Links of closed polygons.
#pragma once

#include "knots/knot.hpp"

#include <span>
#include <string>
#include <vector>

namespace loopwise::knots {

/// Linking numbers: how often one closed polygon winds around another. A number changes its sign in the mirror image
/// and when one of the two polygons is reversed.
struct Linking {
    PolygonFault fault = PolygonFault::none; ///< with a fault there are no numbers
    /// For loop i and a later loop j, in the order (0, 1), (0, 2), ..., (1, 2), ...
    std::vector<int> numbers;
};

/// The exact linking numbers of all pairs of loops.
Linking linking_of(std::span<const std::span<const ChainAtom>> loops);

/// Names the link of two closed polygons by its Jones polynomial and linking number, whatever the directions of the
/// loops: "0^2_1" (not linked), "2^2_1" (Hopf), "+4^2_1" and "-4^2_1" (Solomon), "+5^2_1" and "-5^2_1" (Whitehead). The
/// sign is that of by_hand(); the loops of +4^2_1 wind around each other as a right-handed screw. Two loops that come
/// apart in the diagram are named one by one: "+3_1, 0_1 apart".
KnotName link_of(std::span<const ChainAtom> one, std::span<const ChainAtom> other);

/// Names a diagram of two loops.
KnotName link_of(Diagram diagram);

} // namespace loopwise::knots
