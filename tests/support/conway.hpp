// Diagrams from Conway's notation ("An enumeration of knots and links, and some of their algebraic properties", 1970).
#pragma once

#include "knots/diagram.hpp"

#include <array>
#include <string>

namespace conway {

/// Of a symbol without a polyhedron, as "3 1 2" written 312, "3,21,2", "22,2,2-", "(3,2)-(21,2)". The directions of the
/// loops are any.
loopwise::knots::Diagram diagram(const std::string& symbol);

/// Of the polyhedron 6*, the octahedron, with a tangle in each of its corners; those that are turned stand as a product
/// with 0.
loopwise::knots::Diagram octahedron(const std::array<std::string, 6>& tangles, const std::array<bool, 6>& turned);

} // namespace conway
