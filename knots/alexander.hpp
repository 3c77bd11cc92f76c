// The Alexander polynomial of a diagram.
#pragma once

#include "knots/diagram.hpp"
#include "knots/laurent.hpp"

#include <optional>

namespace loopwise::knots {

/// The Alexander polynomial of a knot ("Topological invariants of knots and links", Trans. Amer. Math. Soc. 30, 1928),
/// symmetric in t and 1/t and 1 at t = 1: t^-1 - 1 + t for both trefoils. Exact for up to `most_crossings`
/// crossings (jones.hpp); nothing for more, or for a link.
std::optional<Laurent> alexander(const Diagram& diagram);

} // namespace loopwise::knots
