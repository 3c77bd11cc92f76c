// Polygons whose knot is known but not seen, and random polygons.
#pragma once

#include "support/chains.hpp"

#include <string_view>

namespace disguises {

/// The closed braid (knots/braid.hpp) of one loop as a polygon around the z axis, one crossing after the other.
Chain braid_polygon(int strands, std::string_view word);

/// Another polygon of the same knot with so many beads at least: edges cut in two, beads moved one by one, pieces
/// turned as crankshafts, and all turned at random. A bead moves only if no edge meets the two triangles that its own
/// edges sweep on the way, so that the polygon never passes through itself.
Chain disguised(Chain polygon, std::size_t beads, chains::Random& random);

/// A closed polygon of edges of length 1, an even number of them, at random: pairs of edges turn about their sum, which
/// leaves the distribution of random equilateral polygons as it is, ten times as often as there are edges.
Chain random_polygon(int edges, chains::Random& random);

} // namespace disguises
