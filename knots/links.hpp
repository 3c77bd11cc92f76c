// How closed polygons are linked with each other.
#pragma once

#include "knots/knot.hpp"

#include <span>
#include <string>
#include <vector>

namespace loopwise::knots {

/// How often one closed polygon winds around another: half the signs of their crossings. It turns its sign in the
/// mirror image and when one of the two is run through backwards.
struct Linking {
    PolygonFault fault = PolygonFault::none; ///< with one, there are no numbers
    /// For loop i and a later loop j, in the order (0, 1), (0, 2), ..., (1, 2), ...
    std::vector<int> numbers;
};

/// Of all pairs of loops; exact. None for fewer than two loops.
Linking linking_of(std::span<const std::span<const ChainAtom>> loops);

/// What two closed polygons are together, as far as the Jones polynomial and the linking number tell: "0^2_1" (not
/// linked), "2^2_1" (Hopf), "+4^2_1" and "-4^2_1" (Solomon), "+5^2_1" and "-5^2_1" (Whitehead), whichever way the loops
/// run; + where the lowest and the highest exponent of their Jones polynomial add up to more than 0 when crossings
/// between the two do not count in the writhe. The loops of 4^2_1 with a + wind around each other as a right-handed
/// screw. Two loops that come apart in the diagram are named one by one: "+3_1, 0_1 apart".
KnotName link_of(std::span<const ChainAtom> one, std::span<const ChainAtom> other);

/// Of a diagram of two loops.
KnotName link_of(Diagram diagram);

} // namespace loopwise::knots
