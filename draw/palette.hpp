// The colours along chains.
#pragma once

#include <cstddef>
#include <string>

namespace loopwise::draw {

/// The colour of a place along a chain, 0 for its first atom to 1 for its last, as "#rrggbb". A chain alone goes
/// through many hues; each of several has one of its own, and goes from dark to light.
std::string colour_along(double place, std::size_t chain = 0, std::size_t chains = 1);

} // namespace loopwise::draw
