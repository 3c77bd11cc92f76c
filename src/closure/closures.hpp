// The closures as silent operations: no stream, no process-wide generator. A random one takes its draws
// from the caller, so that threads need not share a generator and a seed repeats one closure by itself.
#pragma once

#include "libloopwise.h"

#include <functional>

namespace loopwise::closure {

/// A whole number from 0 up, as std::rand() gives them. A closure takes it modulo the rows it may use.
using Draw = std::function<int()>;

enum class Closing {
    closed,
    nothing_to_close,    ///< no atom, no component, or a component without atoms; nothing changed
    no_such_row,         ///< nothing changed
    too_many_components, ///< for the rows that the closure may use; nothing changed or drawn
    no_direction,        ///< a direction without length; the components before this one stay closed
    no_arc,              ///< the centre and the ends span no plane; those before this one stay closed
};

/// Most components of a structure: no two may have the same direction of the table.
constexpr std::size_t most_components_through_points = 60;
constexpr std::size_t most_components_in_directions = 400;
constexpr std::size_t most_components_by_arcs = 200;

// What each appends, draws and allocates is said at the exported function of the like name:
// CloseChain_1point(), CloseChain_1direction(), CloseChain_2points(), CloseChain_OUT() and those for
// structures. When a draw throws, what was closed before stays closed.

Closing close_through_point(Chain& chain, double scale, const Draw& draw);
Closing close_through_points(Structure& structure, double scale, const Draw& draw);

Closing close_in_direction(Chain& chain, int row);
/// Overload taking a precomputed diameter.
Closing close_in_direction(Chain& chain, int row, double diameter);
Closing close_in_random_direction(Chain& chain, const Draw& draw);
Closing close_in_random_directions(Structure& structure, const Draw& draw);

Closing close_by_arc(Chain& chain, double scale, const Draw& draw);
Closing close_by_arcs(Structure& structure, double scale, const Draw& draw);

Closing close_outside(Chain& chain, double scale);
Closing close_outside(Structure& structure, double scale);

} // namespace loopwise::closure
