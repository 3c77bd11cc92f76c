// Moves that make a diagram smaller and leave the knot as it is.
#pragma once

#include "knots/diagram.hpp"

namespace loopwise::knots {

/// Reidemeister's moves I and II, wherever they take crossings away, until none does. Returns whether any did.
bool undo_kinks_and_bigons(Diagram& diagram);

/// The moves above; and, as long as more than `enough` crossings are left, pieces of a strand that pass over (or under)
/// everything are lifted off and laid anew where they cross less. Every move takes crossings away.
void simplify(Diagram& diagram, int enough);

} // namespace loopwise::knots
