// From invariants to knots of the table.
#pragma once

#include "knots/diagram.hpp"
#include "knots/knot_type.hpp"

namespace loopwise::knots {

/// Sums of more prime knots have more crossings than the table.
constexpr int most_factors = 3;
/// A diagram of fewer crossings with the Jones polynomial 1 is the unknot (Tuzun and Sikora, "Verification of the Jones
/// unknot conjecture up to 24 crossings", J. Knot Theory Ramif. 30, 2021).
constexpr int unknot_is_proven_below = 25;

/// All knots of the table and sums of up to three of them that have these two polynomials and can be what a diagram of
/// so many crossings shows, in the order of the table, fewer factors first. The unknot is among them if the diagram has
/// few enough crossings. Of a diagram that is known to show a prime knot, sums are left out.
std::vector<KnotSum> candidates_of(const Laurent& jones, const Laurent& alexander, int crossings, bool prime);

/// Takes out the candidates that have another signature than the diagram; and those that have other colourings, where
/// these are found in time and do not only confirm that the one candidate left is right.
void exclude(std::vector<KnotSum>& candidates, const Diagram& diagram, bool one_is_right);

} // namespace loopwise::knots
