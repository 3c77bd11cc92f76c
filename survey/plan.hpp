// How a molecule is closed, and how often.
#pragma once

#include "survey/methods.hpp"

#include <cstdint>

namespace loopwise::survey {

/// Most threads that may be asked for.
inline constexpr unsigned most_threads = 1024;

struct Plan {
    Method method = Method::standard();
    std::size_t closures = method->default_closures;
    double scale = 0.0;     ///< for methods that take one
    std::uint64_t seed = 0; ///< for random methods
    unsigned threads = 1;
    bool name_knots = true;
    bool judge_gaps = true; ///< see GapVerdict
    bool together = false;  ///< whether all chains of a molecule are components of one structure
};

/// The closure with this number, whose draws depend on it and the plan's seed alone.
ClosureInput input_of(const Plan& plan, std::size_t closure);

} // namespace loopwise::survey
