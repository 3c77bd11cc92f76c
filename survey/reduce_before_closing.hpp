// Reduction of a chain before it is closed in several directions.
#pragma once

#include "libloopwise.h"

#include <span>

namespace loopwise::survey {

/// Removes beads that no loop needs which close_in_direction() makes of the chain in these rows, with this diameter:
/// their triangles meet neither the chain nor any of the paths from its ends. Each loop keeps its knot and is reduced
/// in far less time. The ends stay; a chain whose ends are at one place stays as it is.
void reduce_before_closing(Chain& chain, std::span<const int> rows, double diameter);

/// The same for the middle of several chains, closed in one row. All chains are parts of a longer one and hold its
/// beads from `middle.front()` to `middle.back()`; `others` are the bonds of the longer chain beside these, `ends`
/// the first and last beads of the chains. The diameter is at least that of each chain.
void reduce_middle_before_closing(Chain& middle, std::span<const ChainAtom> before, std::span<const ChainAtom> behind,
                                  std::span<const ChainAtom> ends, int row, double diameter);

} // namespace loopwise::survey
