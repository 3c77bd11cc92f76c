// How many closures give which knot.
#pragma once

#include "knots/knot_type.hpp"

#include <cstddef>
#include <vector>

namespace loopwise::survey {

/// A knot, or a link, and the number of closures that gave it.
struct KnotCount {
    knots::KnotType knot;
    std::size_t closures = 0;
    std::vector<knots::Laurent> jones{}; ///< of knots beyond the table, the different polynomials
};

/// Adds one closure.
void count(std::vector<KnotCount>& counts, const knots::KnotType& knot);

/// The most frequent first, equals in the order of KnotType.
void sort(std::vector<KnotCount>& counts);

/// Closures that gave the knot, and those that gave any.
std::size_t closures_of(const std::vector<KnotCount>& counts, const knots::KnotType& knot);
std::size_t all_closures(const std::vector<KnotCount>& counts);

} // namespace loopwise::survey
