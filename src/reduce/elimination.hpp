// Triangle elimination on one chain or on all components of a structure: the order of the search.
#pragma once

#include "src/reduce/blocker_search.hpp"

#include <algorithm>
#include <span>

namespace loopwise::reduce {

/// Below this a component has no triangle to spare.
constexpr std::size_t fewest_beads = 3;

/// Takes middle beads of free triangles away until no triangle is free. A triangle is free when contact()
/// finds nothing between it and any segment that shares no bead with it, of its own component or another. The
/// first free triangle of the first component goes first, and after every removal the search starts at the
/// first triangle of the first component. Components of three beads or fewer only stand in the way.
///
/// The literal procedure tests every triangle from the first one on, after every removal, against all
/// segments. This one comes to the same result with less: a triangle stays blocked while its corners and the
/// segment that blocked it are there, so only those are tested again for which one of them has gone; and the
/// test passes over segments that the filter proves to be out of reach.
template <class Id> class Elimination {
  public:
    /// With an index of segments while at least so many beads are left, or without.
    Elimination(std::span<GapBuffer<Id>> components, const Kernels& kernels, SegmentIndex* index = nullptr,
                std::size_t fewest_indexed = 0)
        : components_(components), search_(components, kernels, index, fewest_indexed) {}

    void run() {
        for (GapBuffer<Id>& component : components_) component.bridge_gap();
        for (std::size_t c = 0; c < components_.size();) {
            GapBuffer<Id>& component = components_[c];
            if (component.count() > fewest_beads && component.seek()) {
                const Corners corners = component.corners();
                if (!is_blocked(component, corners)) c = remove_middle(c, corners);
            } else {
                component.bridge_gap();
                ++c;
            }
        }
    }

  private:
    static constexpr Id none = BlockerMemory<Id>::unknown;

    bool is_blocked(GapBuffer<Id>& own, const Corners& corners) {
        const Triangle triangle = own.triangle(corners);
        Id& remembered = own.blockers()[own.left() - 1];
        const Id blocker = search_.find(own, corners, triangle, remembered);
        if (blocker == none) return false;
        remembered = blocker;
        search_.blocked(own, blocker);
        return true;
    }

    /// The first component that may have a free triangle now.
    std::size_t remove_middle(std::size_t c, const Corners& corners) {
        components_[c].remove_middle();
        search_.removed(components_[c], corners);
        return reconsider(c, corners);
    }

    /// The segments to and from the middle are one now, which begins at the first corner; what they blocked may be
    /// free. The first component that this, or the removal, may have freed a triangle of.
    std::size_t reconsider(std::size_t c, const Corners& corners) {
        std::size_t lowest = c;
        for (std::size_t d = 0; d < components_.size(); ++d) {
            const bool any = components_[d].question_blocked_by(corners.first, corners.middle);
            if (any && d != c) components_[d].bridge_gap();
            if (any) lowest = std::min(lowest, d);
        }
        if (lowest != c) components_[c].bridge_gap();
        return lowest;
    }

    std::span<GapBuffer<Id>> components_;
    BlockerSearch<Id> search_;
};

} // namespace loopwise::reduce
