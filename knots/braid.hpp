// Closed braids: the form in which tables publish knots.
#pragma once

#include "knots/diagram.hpp"

#include <span>

namespace loopwise::knots {

/// The closure of a braid. The letter k is a positive crossing of the strands k and k + 1, -k a negative one; 0 ends
/// the word early. Every letter is less than the number of strands.
Diagram closed_braid(int strands, std::span<const signed char> word);

} // namespace loopwise::knots
