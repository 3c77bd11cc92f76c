// From polynomials to names.
#pragma once

#include "knots/laurent.hpp"

#include <string>
#include <vector>

namespace loopwise::knots {

/// The most prime knots that a sum is looked for among.
constexpr int most_factors = 3;
/// A diagram of fewer crossings with the Jones polynomial 1 is the unknot (Tuzun and Sikora, "Verification of the Jones
/// unknot conjecture up to 24 crossings", J. Knot Theory Ramif. 30, 2021).
constexpr int unknot_is_proven_below = 25;

/// All knots of the table and sums of up to three of them with these two polynomials, as "+3_1" or "+3_1 # 4_1", in the
/// order of the table, fewer factors first. The unknot, "0_1", counts if the diagram has few enough crossings.
std::vector<std::string> names_of(const Laurent& jones, const Laurent& alexander, int crossings);

} // namespace loopwise::knots
