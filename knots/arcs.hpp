// The arcs of a diagram, which generate the group of its knot.
#pragma once

#include "knots/diagram.hpp"

#include <vector>

namespace loopwise::knots {

/// The three arcs that meet at a crossing. An arc runs from one passage below to the next. `one` lies to the right of
/// the strand above, `other` to its left: a generator x of the group on each arc, other = over^-1 one over.
struct Meeting {
    int over = -1, one = -1, other = -1;
};

/// For every crossing. The arc that comes out below crossing c has the number c; loops that pass below nothing are one
/// arc each, and have the next numbers.
struct Arcs {
    std::vector<Meeting> meetings;
    int count = 0;
};
Arcs arcs_of(const Diagram& diagram);

} // namespace loopwise::knots
