// The search for a segment that blocks a triangle, where all beads have slots.
#pragma once

#include "src/reduce/recent_blockers.hpp"
#include "src/reduce/segment_index.hpp"

#include <algorithm>
#include <span>

namespace loopwise::reduce {

/// A segment has the number of the bead where it begins. `unknown` stands for no segment.
template <class Id> class BlockerSearch {
  public:
    static constexpr Id unknown = BlockerMemory<Id>::unknown;

    /// The index, if any, is used while at least `fewest_indexed` beads are left.
    BlockerSearch(std::span<GapBuffer<Id>> components, const Kernels& kernels, SegmentIndex* index,
                  std::size_t fewest_indexed)
        : components_(components), kernels_(kernels), index_(index), fewest_indexed_(fewest_indexed) {
        if (index_ == nullptr) return;
        place();
        fill_index();
    }

    /// Returns a segment that meets the triangle behind the gap of a component: `known`, if that still does.
    Id find(const GapBuffer<Id>& own, const Corners& corners, const Triangle& triangle, Id known) {
        const Id likely = static_cast<Id>(known & ~BlockerMemory<Id>::in_question);
        if (known != unknown && !corners.touch(likely) && meets(triangle, likely)) return likely;
        if (recent_.are_likely()) {
            const Id recent = recent_.find(corners, triangle);
            if (recent != unknown) return recent;
        }
        if (!is_placed_ || is_small(own)) {
            const Id found = find_unfiltered(own, triangle);
            if (found != unknown || is_small(own)) return found;
            place();
        }
        const Filter filter = filter_of(triangle, frame_);
        return index_ != nullptr && filter.has_normal() ? find_in_index(corners, triangle, filter)
                                                        : find_in_slots(own, triangle, filter);
    }

    /// Call when the triangle behind the gap was found blocked.
    void blocked(GapBuffer<Id>& own, Id blocker) {
        recent_.count_blocked();
        if (!recent_.are_likely() || own.count() <= most_without_runs) return;
        const bool again = recent_.contain(blocker);
        if (!again) recent_.add(blocker, segment(blocker));
        if (again || !is_placed_) recent_.look_ahead(own);
    }

    /// Call when the middle of a triangle was removed.
    void removed(const GapBuffer<Id>& own, const Corners& corners) {
        recent_.removed(corners);
        if (index_ == nullptr) return;
        using Number = SegmentIndex::Number;
        index_->replace(static_cast<Number>(corners.middle),
                        {static_cast<Number>(corners.first), static_cast<Number>(corners.last)},
                        frame_(own.at_number(corners.first)), frame_(own.at_number(corners.last)));
        if (index_->size() < fewest_indexed_) index_ = nullptr;
    }

  private:
    /// Chains of so few beads are searched without the filter, whose constants take longer than the tests. A
    /// chain that was longer has its positions already.
    static constexpr std::size_t most_unfiltered = 16, most_unfiltered_later = 5;
    /// Positions are not needed while each triangle is blocked by one of so many segments, as in a plane.
    static constexpr std::size_t most_tried_first = 4;
    /// Chains of so few beads have no long runs of blocked triangles.
    static constexpr std::size_t most_without_runs = 6;

    bool is_small(const GapBuffer<Id>& own) const {
        return components_.size() == 1 && own.count() <= (is_placed_ ? most_unfiltered_later : most_unfiltered);
    }

    /// Tries all segments of a small chain, or the first ones of a longer chain.
    [[gnu::noinline]] Id find_unfiltered(const GapBuffer<Id>& own, const Triangle& triangle) const {
        std::size_t most = is_small(own) ? most_unfiltered : most_tried_first;
        const auto [left, right] = own.apart_from_triangle();
        for (std::size_t slot = left.begin; slot < left.end && most > 0; ++slot, --most)
            if (own.meets(triangle, slot)) return own.bead(slot);
        for (std::size_t slot = right.begin; slot < right.end && most > 0; ++slot, --most)
            if (own.meets(triangle, slot)) return own.bead(slot);
        return unknown;
    }

    Id find_in_index(const Corners& corners, const Triangle& triangle, const Filter& filter) const {
        Id found = unknown;
        const Triangle in_frame{frame_(triangle.t0), frame_(triangle.t1), frame_(triangle.t2)};
        index_->search(filter, in_frame, [&](std::size_t number) {
            if (corners.touch(number) || !meets(triangle, number)) return false;
            found = static_cast<Id>(number);
            return true;
        });
        return found;
    }

    /// Begins with the left part: its blockers last longest, since the next removals are on the right.
    [[gnu::noinline]] Id find_in_slots(const GapBuffer<Id>& own, const Triangle& triangle, const Filter& filter) const {
        Id found = unknown;
        const auto find_within = [&](const GapBuffer<Id>& beads, std::size_t begin, std::size_t end) {
            const std::size_t slot = find_met(kernels_.find_candidates, filter, own.positions(), begin, end,
                                              [&](std::size_t candidate) { return beads.meets(triangle, candidate); });
            if (slot < end) found = beads.bead(slot);
            return slot < end;
        };
        const auto [left, right] = own.apart_from_triangle();
        if (find_within(own, left.begin, left.end) || find_within(own, right.begin, right.end)) return found;

        for (const GapBuffer<Id>& other : components_) {
            if (&other == &own || other.count() == 0) continue;
            const bool ends_left = other.right() == other.end();
            if (find_within(other, other.begin(), other.left() - (ends_left && !other.closed())) ||
                (!ends_left && find_within(other, other.right(), other.end() - !other.closed())))
                return found;
        }
        return unknown;
    }

    /// The segment that begins at a bead.
    Segment segment(std::size_t number) const {
        const GapBuffer<Id>& owner = owner_of(number);
        return {owner.at_number(number), owner.at_number(number_after(owner, number))};
    }

    /// Whether the segment that begins at a bead is there and meets a triangle.
    bool meets(const Triangle& triangle, std::size_t number) const {
        const GapBuffer<Id>& owner = owner_of(number);
        const std::size_t end = number_after(owner, number);
        return end != GapBuffer<Id>::none &&
               contact(triangle, {owner.at_number(number), owner.at_number(end)}) != Contact::none;
    }

    const GapBuffer<Id>& owner_of(std::size_t number) const {
        const GapBuffer<Id>* owner = components_.data();
        if (components_.size() > 1)
            owner = &*std::upper_bound(
                components_.begin(), components_.end(), number,
                [](std::size_t n, const GapBuffer<Id>& component) { return n < component.numbers_end(); });
        return *owner;
    }

    std::size_t number_after(const GapBuffer<Id>& owner, std::size_t number) const {
        if (index_ == nullptr) return owner.number_after_bead(number);
        const SegmentIndex::Number next = index_->next(static_cast<SegmentIndex::Number>(number));
        return next != SegmentIndex::no_bead ? next : GapBuffer<Id>::none;
    }

    /// Gives all beads their positions.
    [[gnu::noinline]] void place() {
        Extent extent;
        for (const GapBuffer<Id>& component : components_) extent.widen(component.atoms());
        frame_ = extent.frame();
        for (GapBuffer<Id>& component : components_) component.place(frame_, kernels_.put_positions);
        is_placed_ = true;
    }

    /// Gives all segments to the index, or drops it if there are too few of them.
    void fill_index() {
        std::size_t beads = 0;
        for (const GapBuffer<Id>& component : components_) beads += component.count();
        if (beads < fewest_indexed_ || frame_.scale == 0) index_ = nullptr;
        if (index_ == nullptr) return;
        for (const GapBuffer<Id>& component : components_) {
            component.for_each_segment([&](std::size_t slot) {
                const std::size_t next = component.next(slot);
                index_->add({component.bead(slot), component.bead(next)}, frame_(component.at(slot)),
                            frame_(component.at(next)));
            });
        }
        index_->sort();
    }

    std::span<GapBuffer<Id>> components_;
    Kernels kernels_;
    SegmentIndex* index_;
    std::size_t fewest_indexed_;
    Frame frame_{};
    bool is_placed_ = false;
    RecentBlockers<Id> recent_;
};

} // namespace loopwise::reduce
