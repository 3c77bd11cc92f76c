// Triangle elimination (KMT reduction) on a chain or on all components of a structure: the order of the
// search.
#pragma once

#include "src/reduce/blocker_search.hpp"

#include <algorithm>
#include <span>

namespace loopwise::reduce {

/// A component of so few beads loses none.
constexpr std::size_t fewest_beads = 3;

/// Removes the middle beads of free triangles until no triangle is free. A triangle is free when contact()
/// finds nothing between it and any segment that shares no bead with it, of its own component or another. The
/// first free triangle of the first component goes first. After every removal the search starts at the first
/// triangle of the first component. Components of three beads or fewer lose nothing but can block.
///
/// The literal procedure tests every triangle from the first one on, after every removal, against all
/// segments. This class gives the same result with fewer tests. A triangle stays blocked while its corners
/// and the segment that blocked it exist, so a triangle is tested again only when one of them has gone. The
/// test skips segments that the filter proves to be out of reach.
template <class Id> class Elimination {
  public:
    /// The index, if any, is used while at least `fewest_indexed` beads are left.
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

    /// Returns the first component that may have a free triangle now.
    std::size_t remove_middle(std::size_t c, const Corners& corners) {
        components_[c].remove_middle();
        search_.removed(components_[c], corners);
        return reconsider(c, corners);
    }

    /// One segment, which begins at the first corner, replaces those to and from the middle. The triangles
    /// that these blocked may be free. Returns the first component that may have a free triangle now.
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
