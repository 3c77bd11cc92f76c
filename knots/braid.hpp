// Closed braids: the form in which tables publish knots.
#pragma once

#include "knots/diagram.hpp"

#include <string_view>

namespace loopwise::knots {

/// The closure of a braid. The letter a is a positive crossing of the strands 1 and 2, b of 2 and 3, and so on;
/// capitals are negative crossings.
Diagram closed_braid(int strands, std::string_view word);

} // namespace loopwise::knots
