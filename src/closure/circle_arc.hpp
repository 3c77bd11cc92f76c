// Atoms along an arc of a circle.
#pragma once

#include "libloopwise.h"

namespace loopwise::closure {

struct Arc {
    Chain atoms;               ///< none when the centre and the two directions span no plane
    bool has_no_basis = false; ///< no pair of coordinates tells the directions apart
};

/// The atoms of GivePointsOnTheCircle(), which says all about them; prints nothing. Allocates.
Arc circle_arc(PointR3 start_point, PointR3 end_point, PointR3 centre, double radius, std::int32_t last_id);

} // namespace loopwise::closure
