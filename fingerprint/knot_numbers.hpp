// Knots, and the numbers that a matrix holds for them.
#pragma once

#include "survey/survey.hpp"

#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

namespace loopwise::fingerprint {

/// The knot to count a loop as: all loops that get no name count as one.
const knots::KnotType& counted_as(const knots::KnotType& knot);

using KnotCounts = std::vector<survey::KnotCount>;

/// Equal counts: a knot goes before the unknot, the unknot before loops without a name, then in the order of KnotType.
const survey::KnotCount& most_frequent(const KnotCounts& counts);

/// Gives out a number for each knot, in the order in which threads meet them; the unknot has 0.
class KnotNumbers {
  public:
    std::uint16_t number_of(const knots::KnotType& knot);
    std::vector<knots::KnotType> by_number() const;
    /// All knots, the unknot first, the others in order; and where each number's knot stands there.
    std::pair<std::vector<knots::KnotType>, std::vector<std::uint16_t>> sorted() const;

  private:
    std::mutex mutex_;
    std::unordered_map<knots::KnotType, std::uint16_t> numbers_{{knots::KnotType::unknot(), 0}};
};

} // namespace loopwise::fingerprint
