// Slow versions of the operations, each written down step by step. They are the judges of the fast ones.
#pragma once

#include "libloopwise.h"

namespace literal {

int intersection(const PointR3 triangle[3], const PointR3 segment[2]);

/// Whether a chain stores its first atom at its end again.
bool repeats_end(const Chain& chain);
int reduce(Structure& structure, bool closed);
int reduce(Chain& chain, bool closed);

double diameter(const Structure& structure);

Chain read(const std::string& text, bool& error);
std::string write(const Chain& chain, bool plain);

} // namespace literal
