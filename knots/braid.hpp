// Closed braids, which is how tables of knots write knots down.
#pragma once

#include "knots/diagram.hpp"

#include <span>

namespace loopwise::knots {

/// The closure of a braid on so many strands. The letter k makes strands k and k + 1 cross with a positive
/// crossing, -k with a negative one; 0 ends the word early. Every letter is less than the number of strands.
Diagram closed_braid(int strands, std::span<const signed char> word);

} // namespace loopwise::knots
