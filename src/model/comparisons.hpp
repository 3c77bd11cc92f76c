// The tolerance comparisons, inline for the kernels. Each has its own formula: one is not the
// negation of another, neither in rounding nor for a not-a-number.
#pragma once

#include "libloopwise.h"

#include <cmath>

namespace loopwise::model {

inline bool equal(double a, double b) { return std::fabs(a - b) < EPS; }
inline bool greater(double a, double b) { return a >= b + EPS; }
inline bool greater_or_equal(double a, double b) { return a > b - EPS; }

} // namespace loopwise::model
