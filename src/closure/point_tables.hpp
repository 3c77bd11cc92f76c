// The two tables of directions. They are constant data: what FillFulerenData() does at its first call is
// to seed the process's generator.
#pragma once

#include "libloopwise.h"

#include <array>

namespace loopwise::closure {

constexpr int fullerene_rows = 60;
constexpr int uniform_rows = 400;

extern const std::array<PointR3, fullerene_rows> fullerene_directions;
extern const std::array<PointR3, uniform_rows> uniform_directions;

} // namespace loopwise::closure
