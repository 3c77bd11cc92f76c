// Knots by name, and the numbers that a matrix holds for them.
#pragma once

#include "knots/knot.hpp"

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace loopwise::fingerprint {

inline constexpr const char* unknot_name = "0_1";
/// All loops that get no name, see KnotStatus, count as one.
inline constexpr const char* unnamed = "not named";

inline bool is_knot(const std::string& name) { return name != unknot_name && name != unnamed; }

/// The name, or `unnamed`.
std::string counted_name(const knots::KnotName& name);

/// Closures by the name of their knot.
using KnotCounts = std::map<std::string, std::size_t>;

/// Equal counts: a knot goes before the unknot, the unknot before `unnamed`, then by name.
KnotCounts::const_iterator most_frequent(const KnotCounts& counts);

/// Gives out a number for each name, in the order in which threads meet them; the unknot has 0.
class KnotNumbers {
  public:
    std::uint16_t number_of(const std::string& name);
    /// All names, the unknot first, the others sorted; and where each number's name stands there.
    std::pair<std::vector<std::string>, std::vector<std::uint16_t>> sorted() const;

  private:
    std::mutex mutex_;
    std::map<std::string, std::uint16_t> numbers_{{unknot_name, 0}};
};

} // namespace loopwise::fingerprint
