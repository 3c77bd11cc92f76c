// The Jones polynomial of a diagram.
#pragma once

#include "knots/diagram.hpp"
#include "knots/laurent.hpp"

#include <optional>

namespace loopwise::knots {

/// The largest diagrams that the Jones polynomial is computed of: so many crossings, and so many edges that lead
/// from the part that is done to the rest. A planar diagram of that many crossings rarely needs as wide a front.
constexpr int most_crossings = 59;
constexpr int widest_front = 24;

/// The Jones polynomial, by Kauffman's bracket ("State models and the Jones polynomial", Topology 26, 1987): 1 for
/// the unknot, t + t^3 - t^4 for the right-handed trefoil. Of a link, the one that no direction of its loops matters
/// to: the writhe leaves out crossings between different loops.
///
/// Nothing where the diagram is larger than the limits above, or where a coefficient leaves the 64-bit range on the
/// way. The time grows with the narrowest front found: about a tenth of a second at most.
std::optional<Laurent> jones(const Diagram& diagram);

} // namespace loopwise::knots
