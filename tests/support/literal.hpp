// Slow versions of the operations, each written down step by step. They are the judges of the fast ones.
#pragma once

#include "libloopwise.h"

namespace literal {

int intersection(const PointR3 triangle[3], const PointR3 segment[2]);

/// Whether a chain stores its first atom at its end again.
bool repeats_end(const Chain& chain);
int reduce(Structure& structure, bool closed);
int reduce(Chain& chain, bool closed);

PointR3 centre(const Chain& chain);
double radius(const Chain& chain);
double diameter(const Structure& structure);

enum class Closure { one_point, direction, two_points, outside };
/// Alone, the one component is closed as a chain, which measures and draws in another way.
int close(Structure& structure, Closure how, bool alone, double scale);

Chain read(const std::string& text, bool& error);
std::string write(const Chain& chain, bool plain);

} // namespace literal
