// An order of directions whose first few are spread evenly.
#pragma once

#include <span>

namespace loopwise::survey {

/// The rows of the table of 400 directions in farthest-point order, so that the first few are spread evenly: row 0,
/// then always the row whose angle to the nearest row taken is the largest, the first of equals (Gonzalez, "Clustering
/// to minimize the maximum intercluster distance", Theor. Comput. Sci. 38, 1985).
std::span<const int> farthest_point_order();

} // namespace loopwise::survey
