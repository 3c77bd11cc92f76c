// Moves that take crossings away from a diagram and keep its knot.
#pragma once

#include "knots/diagram.hpp"

namespace loopwise::knots {

/// Undoes Reidemeister's moves I and II wherever they take crossings away. Returns whether any did.
bool undo_kinks_and_bigons(Diagram& diagram);

/// The moves above and, while more than `enough` crossings are left, pass moves: a part of a strand that is over (or
/// under) at all its crossings is rerouted where it has fewer. Every move takes crossings away.
void simplify(Diagram& diagram, int enough);

} // namespace loopwise::knots
