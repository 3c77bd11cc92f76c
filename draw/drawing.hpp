// Loops seen along one direction, and where a strand passes under another.
#pragma once

#include "survey/survey.hpp"

#include <vector>

namespace loopwise::draw {

inline constexpr int views = 60; ///< the directions of ProjectChain()

/// What an edge of a drawing stands for; none is seen of the one from an open chain's last bead to its first.
enum class Bond { ordinary, gap, closing, none };

/// What joins the last bead of a chain to its first.
enum class Ends { closure, bond, nothing };

struct Drawing {
    /// The edges of all loops, one after another; the tag of each is its loop's number. It carries an
    /// annotation for every place where it passes under another: the position from its start, 0, to its
    /// end, 1, and the other edge's index as the label. z is towards the viewer.
    std::vector<Edge> edges;
    std::vector<Bond> bonds; ///< of every edge
    std::size_t crossings = 0;
};

/// The loops are those of the result's chains, reduced or not.
Drawing drawing_of(const std::vector<survey::Loop>& loops, const survey::Result& result, int view);
Drawing drawing_of(const std::vector<survey::Loop>& loops, const survey::Result& result, int view, Ends ends);

/// The view with the fewest crossings among those that see the closure from the side; crossings of the
/// reduced loops, and beads that seem to lie on a stick, count several times. Of long chains only a few views
/// are tried.
int clearest_view(const survey::ClosureResult& made, const survey::Result& result);

/// The view of chains by themselves with the fewest crossings.
int clearest_view(const std::vector<survey::Loop>& chains, const survey::Result& result, Ends ends);

} // namespace loopwise::draw
