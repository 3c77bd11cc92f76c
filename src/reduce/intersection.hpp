// The predicate on which triangle elimination rests.
#pragma once

#include "libloopwise.h"

namespace loopwise {

struct Triangle {
    PointR3 t0, t1, t2;
};

struct Segment {
    PointR3 s0, s1;
};

/// What intersection() returns.
enum class Contact { none = 0, inside = 1, boundary = 2 };

/// The contact of a segment with a triangle; see intersection() in the header.
Contact contact(const Triangle& triangle, const Segment& segment);

} // namespace loopwise
