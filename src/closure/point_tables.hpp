// The two process-wide tables of directions. All zero until FillFulerenData() has run, read-only
// afterwards.
#pragma once

#include "libloopwise.h"

#include <array>

namespace loopwise {

constexpr int fuleren_rows = 60;
constexpr int uniform_rows = 400;

extern std::array<PointR3, fuleren_rows> fuleren;
extern std::array<PointR3, uniform_rows> uniform;

} // namespace loopwise
