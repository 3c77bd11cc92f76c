// Widths of knots in reports for people: the text of a sum, or of many loops, has no end.
#pragma once

#include <cstddef>

namespace loopwise::app {

inline constexpr std::size_t widest_knot_column = 36, longest_knot = 60;

} // namespace loopwise::app
