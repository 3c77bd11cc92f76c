// What closed polygons look like from a direction: from beads to a diagram.
#pragma once

#include "knots/diagram.hpp"
#include "libloopwise.h"

#include <span>

namespace loopwise::knots {

enum class PolygonFault {
    none,
    few_beads,      ///< fewer than three
    not_finite,     ///< an infinity or a not-a-number among the coordinates
    repeated_beads, ///< two beads of one loop at the same place
    touching,       ///< the polygons meet, or come nearer to it than the arithmetic can tell
};

struct View {
    PolygonFault fault = PolygonFault::none;
    Diagram diagram;
};

/// The loop without the copy of its first bead that may stand at its end.
std::span<const ChainAtom> without_copy_of_first(std::span<const ChainAtom> loop);

/// The diagram of closed polygons (a segment joins the last bead to the first) with the fewest crossings among
/// those of a handful of directions. A loop of three beads is taken as it is, also where it is flat.
///
/// The diagram is right for the polygons as given, to the last bit: every sign that it depends on is farther
/// from 0 than all rounding can carry it, and a direction in which one is not is passed over. When several
/// dozen directions are, the polygons are `touching`.
View project_diagram(std::span<const std::span<const ChainAtom>> loops);

} // namespace loopwise::knots
