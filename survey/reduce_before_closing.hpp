// Reduction of a chain before it is closed in several directions.
#pragma once

#include "libloopwise.h"

#include <span>

namespace loopwise::survey {

/// Removes beads that no loop needs which close_in_direction() makes of the chain in these rows, with this diameter:
/// their triangles meet neither the chain nor any of the paths from its ends. Each loop keeps its knot and is reduced
/// in far less time. The ends stay; a chain whose ends are at one place stays as it is.
void reduce_before_closing(Chain& chain, std::span<const int> rows, double diameter);

} // namespace loopwise::survey
