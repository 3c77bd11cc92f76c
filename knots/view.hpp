// Projection of closed polygons: from beads to a diagram.
#pragma once

#include "knots/diagram.hpp"
#include "libloopwise.h"

#include <span>

namespace loopwise::knots {

enum class PolygonFault {
    none,
    few_beads,      ///< fewer than three
    triangle,       ///< three beads, where a caller asks for more
    not_finite,     ///< an infinity or a not-a-number among the coordinates
    repeated_beads, ///< two beads of one loop at the same place
    touching,       ///< the polygons meet, or come too near for the arithmetic to tell
};

struct View {
    PolygonFault fault = PolygonFault::none;
    Diagram diagram;
};

/// The loop without a copy of its first bead at its end.
std::span<const ChainAtom> without_copy_of_first(std::span<const ChainAtom> loop);

/// The diagram of closed polygons (a segment joins the last bead to the first) with the fewest crossings among those
/// along a few directions. Three different beads are a loop even where they lie on a line.
///
/// The diagram is exactly that of the polygons as given: every sign that it depends on is proven against rounding. A
/// direction with a sign that is not proven is skipped; where several dozen directions are, the polygons are
/// `touching`.
View project_diagram(std::span<const std::span<const ChainAtom>> loops);

} // namespace loopwise::knots
