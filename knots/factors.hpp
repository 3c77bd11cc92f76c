// A connected sum taken apart.
#pragma once

#include "knots/diagram.hpp"

#include <vector>

namespace loopwise::knots {

/// A factor that is drawn by itself, and which loops of the whole diagram its loops 0, 1, ... come from.
struct Factor {
    Diagram diagram;
    std::vector<int> loops;
};

/// Simplified diagrams of fewer crossings show no sum: neither of two trefoils, nor of two Hopf links.
constexpr int fewest_in_sum = 6, fewest_in_linked_sum = 4;

/// An alternating diagram that shows no factors has as few crossings as can be (Kauffman 1987), and its knot is prime
/// (Menasco, "Closed incompressible surfaces in alternating knot and link complements", Topology 23, 1984).
bool is_alternating(const Diagram& diagram);

/// Splits a diagram wherever two edges of one loop border the same two faces: a closed curve through these crosses the
/// diagram only there, so what lies inside and what lies outside are factors of a connected sum. Every factor is
/// simplified to `enough` crossings (simplify.hpp) and split again. Where more are left, up to so many attempts are
/// made with strands laid anew at random. Factors that end without a crossing are unknots and are left out; so are
/// loops without a crossing. A diagram that falls apart is split likewise: factors belong to one sum if they share a
/// loop.
std::vector<Factor> factors_of(Diagram diagram, int enough, int attempts = 0);

} // namespace loopwise::knots
