// From polynomials to knots of the table.
#pragma once

#include "knots/knot_type.hpp"

namespace loopwise::knots {

/// Sums of more prime knots are not looked for.
constexpr int most_factors = 3;
/// A diagram of fewer crossings with the Jones polynomial 1 is the unknot (Tuzun and Sikora, "Verification of the Jones
/// unknot conjecture up to 24 crossings", J. Knot Theory Ramif. 30, 2021).
constexpr int unknot_is_proven_below = 25;

/// All knots of the table and sums of up to three of them with these two polynomials, in the order of the table, fewer
/// factors first. The unknot is among them if the diagram has few enough crossings.
std::vector<KnotSum> candidates_of(const Laurent& jones, const Laurent& alexander, int crossings);

} // namespace loopwise::knots
