// The signature of a knot.
#pragma once

#include "knots/diagram.hpp"

#include <optional>

namespace loopwise::knots {

/// The signature of a knot, -2 for the right-handed trefoil and 2 for the left-handed one: that of a Goeritz matrix of
/// the diagram with a correction for its crossings (Gordon and Litherland, "On the signature of a link", Invent. Math.
/// 47, 1978). Exact. Nothing for more crossings than the limit in invariants.hpp, or when a number leaves the 128-bit
/// range on the way.
std::optional<int> signature(const Diagram& diagram);

} // namespace loopwise::knots
