// What can be taken off a chain before it is closed, whichever way that is.
#pragma once

#include "libloopwise.h"

#include <span>

namespace loopwise::survey {

/// Takes beads off a chain that every loop can spare which close_in_direction() makes of it in these rows, with this
/// distance: those of triangles that neither the chain nor one of the paths from its ends meets. Each loop stays the
/// knot that it was, and is reduced in far less time. The ends stay; a chain whose ends are one place stays as it is.
void reduce_before_closing(Chain& chain, std::span<const int> rows, double diameter);

} // namespace loopwise::survey
