// What no deformation of closed curves changes: the judges of whether a reduction keeps the entanglement.
#pragma once

#include "libloopwise.h"

namespace knots {

/// |Alexander polynomial(-1)| of the closed polygon, up to half of a prime near 2^31, or its remainder's
/// distance from 0: 1 for a circle, 3 for a trefoil, 5 for a figure-eight.
std::uint64_t determinant(const Chain& ring);

/// How often one closed polygon winds around the other.
int linking_number(const Chain& one, const Chain& other);

} // namespace knots
