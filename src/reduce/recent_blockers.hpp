// The blockers of the last triangles, which often block the next ones too.
#pragma once

#include "src/reduce/gap_buffer.hpp"

#include <array>

namespace loopwise::reduce {

/// The last two segments that blocked a triangle whose predecessor was blocked too, with their ends.
template <class Id> class RecentBlockers {
  public:
    static constexpr Id unknown = BlockerMemory<Id>::unknown;

    /// Whether enough triangles in a row were blocked, so that the next is likely to have the same blocker.
    bool are_likely() const { return in_a_row_ >= often; }
    bool contain(Id number) const { return recent_[0].number == number || recent_[1].number == number; }

    void count_blocked() { ++in_a_row_; }
    void add(Id number, const Segment& segment) { recent_ = {Recent{number, segment}, recent_[0]}; }

    /// The middle of a triangle was removed: the segments from its first two corners have gone.
    void removed(const Corners& corners) {
        in_a_row_ = 0;
        for (Recent& recent : recent_)
            if (recent.number == corners.first || recent.number == corners.middle) recent.number = unknown;
    }

    /// The number of one that blocks a triangle, or `unknown`.
    [[gnu::noinline]] Id find(const Corners& corners, const Triangle& triangle) const {
        for (const auto& [number, segment] : recent_)
            if (number != unknown && !corners.touch(number) && contact(triangle, segment) != Contact::none)
                return number;
        return unknown;
    }

    /// Remembers recent blockers for the triangles behind the gap, up to the first that none of them is
    /// parallel to. On a lattice one of the two is parallel to nearly every triangle.
    [[gnu::noinline]] void look_ahead(GapBuffer<Id>& beads) const {
        const auto& [first, second] = recent_;
        if (first.number == unknown) return;
        for (std::size_t slot = beads.right(); slot + 2 < beads.end(); ++slot) {
            const std::size_t before = beads.bead(slot > beads.right() ? slot - 1 : beads.left() - 1);
            const std::size_t last = beads.bead(slot + 2);
            // The numbers of beads in a row ascend.
            const auto is_apart = [&](Id number) { return number < before || number > last; };
            if (!is_apart(first.number) || !is_apart(second.number)) return;
            const Triangle triangle{beads.at(slot), beads.at(slot + 1), beads.at_number(last)};
            const bool is_first = determinant(triangle, first.segment) == 0;
            const bool is_second = second.number != unknown && determinant(triangle, second.segment) == 0;
            if (!(is_first | is_second)) return;
            beads.remember(slot, is_first ? first.number : second.number);
        }
    }

  private:
    static constexpr int often = 2;

    struct Recent {
        Id number = unknown;
        Segment segment{};
    };
    std::array<Recent, 2> recent_;
    int in_a_row_ = 0;
};

} // namespace loopwise::reduce
