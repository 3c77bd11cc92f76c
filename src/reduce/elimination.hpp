// Triangle elimination on one chain or on all components of a structure: one engine.
#pragma once

#include "src/reduce/gap_buffer.hpp"
#include "src/reduce/rear_part.hpp"
#include "src/reduce/segment_index.hpp"

#include <array>
#include <bit>
#include <optional>
#include <span>

namespace loopwise::reduce {

/// A component to reduce: the beads that are left stand at the front of its atoms afterwards.
struct Component {
    ChainAtom* atoms;
    std::size_t count;
    bool closed;
};

/// An index of segments for chains without a rear, if there is one, and how many beads are worth its use.
struct Indexing {
    SegmentIndex* index = nullptr;
    std::size_t fewest_beads = 0;
};

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
    Elimination(std::span<GapBuffer<Id>> components, const Positions3& positions, const Kernels& kernels,
                const Indexing& indexing)
        : components_(components), positions_(positions), kernels_(kernels), indexing_(indexing) {
        for (GapBuffer<Id>& component : components_) component.bridge_gap();
        if (indexing_.index == nullptr) return;
        place();
        fill_index();
    }

    void run() {
        for (std::size_t c = 0; c < components_.size();) {
            GapBuffer<Id>& component = components_[c];
            if (component.count() > fewest_beads && component.seek()) {
                const Corners corners = corners_behind_gap(c);
                if (!is_blocked(corners)) c = remove_middle(corners);
            } else if (component.count() <= fewest_beads || !remove_free_in_rear(c)) {
                component.bridge_gap();
                ++c;
            }
        }
    }

  private:
    static constexpr Id none = GapBuffer<Id>::unknown;
    static constexpr Id in_question = GapBuffer<Id>::in_question;

    /// Below this a component has no triangle to spare.
    static constexpr std::size_t fewest_beads = 3;
    /// So many blocked triangles in a row, and the next is likely to be blocked by what blocked the last two.
    static constexpr int often = 2;
    /// A chain of so few beads has no runs of blocked triangles that are worth a look ahead.
    static constexpr std::size_t most_without_runs = 6;
    /// A chain of so few beads is searched without the filter: it is not worth its constants then. One that was
    /// longer has the positions already.
    static constexpr std::size_t most_unfiltered = 16, most_unfiltered_later = 5;
    /// While all triangles are blocked by one of so many segments, as in a plane, no positions are needed.
    static constexpr std::size_t most_tried_first = 4;

    /// A triangle of beads in a row, and the bead before them.
    struct Corners {
        std::size_t component, before, first, middle, last;
        /// Whether a segment shares a bead with the triangle, by where it begins.
        bool touch(std::size_t number) const {
            return number == before || number == first || number == middle || number == last;
        }
        bool operator==(const Corners&) const = default;
    };

    Triangle triangle_of(const Corners& corners) const {
        const GapBuffer<Id>& component = components_[corners.component];
        return {component.at_number(corners.first), component.at_number(corners.middle),
                component.at_number(corners.last)};
    }

    /// The triangle behind the gap.
    Corners corners_behind_gap(std::size_t c) const {
        const GapBuffer<Id>& component = components_[c];
        const std::size_t first = component.left() - 1, middle = component.next(first),
                          last = component.next(middle);
        const std::size_t before =
            first > component.begin() ? component.bead(first - 1) : component.last_number();
        return {c, before, component.bead(first), component.bead(middle), component.bead(last)};
    }

    bool is_blocked(const Corners& corners) {
        GapBuffer<Id>& component = components_[corners.component];
        const Triangle triangle = triangle_of(corners);
        Id& remembered = component.blocker(component.left() - 1);
        const Id blocker = find_blocker(corners, triangle, remembered);
        blocked_in_a_row_ = blocker == none ? 0 : blocked_in_a_row_ + 1;
        if (blocker == none) return false;
        remembered = blocker;
        if (blocked_in_a_row_ >= often && component.count() > most_without_runs) {
            const bool again = is_recent(blocker);
            if (!again) make_recent(blocker);
            if (again || !is_placed_) look_ahead(component);
        }
        return true;
    }

    /// Where most triangles are blocked, two segments often block the next as well. They are kept with their ends.
    struct Recent {
        Id number = none;
        Segment segment{};
    };

    bool is_recent(Id number) const { return recent_[0].number == number || recent_[1].number == number; }

    void make_recent(Id number) {
        const GapBuffer<Id>& owner = owner_of(number);
        recent_[1] = recent_[0];
        recent_[0] = {number, {owner.at_number(number), owner.at_number(number_after(owner, number))}};
    }

    Id find_recent(const Corners& corners, const Triangle& triangle) const {
        const auto& [first, second] = recent_;
        const bool has_first = first.number != none && !corners.touch(first.number);
        const bool has_second = second.number != none && !corners.touch(second.number);
        // On a lattice one of the two is nearly always parallel, but no branch can tell which.
        const bool first_parallel = has_first & (determinant(triangle, first.segment) == 0);
        const bool second_parallel = has_second & (determinant(triangle, second.segment) == 0);
        if (first_parallel | second_parallel) return first_parallel ? first.number : second.number;
        if (has_first && contact(triangle, first.segment) != Contact::none) return first.number;
        if (has_second && contact(triangle, second.segment) != Contact::none) return second.number;
        return none;
    }

    /// Runs of triangles that a recent segment is parallel to, as on a lattice, need no more than its determinant.
    [[gnu::noinline]] void look_ahead(GapBuffer<Id>& component) const {
        const auto& [first, second] = recent_;
        if (first.number == none) return;
        for (std::size_t slot = component.right(); slot + 2 < component.end(); ++slot) {
            const std::size_t before =
                component.bead(slot > component.right() ? slot - 1 : component.left() - 1);
            const std::size_t last = component.bead(slot + 2);
            // The numbers of beads in a row ascend.
            const auto is_apart = [&](Id number) { return number < before || number > last; };
            if (!is_apart(first.number) || !is_apart(second.number)) return;
            const Triangle triangle{component.at(slot), component.at(slot + 1), component.at_number(last)};
            const bool first_parallel = determinant(triangle, first.segment) == 0;
            const bool second_parallel = second.number != none && determinant(triangle, second.segment) == 0;
            if (!(first_parallel | second_parallel)) return;
            component.remember(slot, first_parallel ? first.number : second.number);
        }
    }

    Id find_blocker(const Corners& corners, const Triangle& triangle, Id known) {
        const Id likely = static_cast<Id>(known & ~in_question);
        if (known != none && still_meets(corners, triangle, likely)) return likely;
        if (blocked_in_a_row_ >= often) {
            const Id recent = find_recent(corners, triangle);
            if (recent != none) return recent;
        }

        const GapBuffer<Id>& own = components_[corners.component];
        if (!is_placed_ || is_small(own)) {
            const Id without_filter = try_without_filter(own, triangle);
            if (without_filter != none || is_small(own)) return without_filter;
            place();
        }

        const Filter filter = filter_of(triangle, frame_);
        Id found = none;
        if (indexing_.index != nullptr && filter.has_normal()) {
            const Triangle in_frame{frame_(triangle.t0), frame_(triangle.t1), frame_(triangle.t2)};
            indexing_.index->search(filter, in_frame, [&](std::size_t number) {
                if (!still_meets(corners, triangle, number)) return false;
                found = static_cast<Id>(number);
                return true;
            });
            return found;
        }
        const auto search = [&](const GapBuffer<Id>& component, std::size_t begin, std::size_t end) {
            found = search_slots(component, filter, triangle, begin, end);
            return found != none;
        };
        const auto [left, right] = apart_from_triangle(own);
        if (search(own, left.begin, left.end) || search(own, right.begin, right.end)) return found;
        if (own.has_rear()) return search_rear(corners, filter, triangle, follower_of(corners));

        for (const GapBuffer<Id>& other : components_) {
            if (&other == &own || other.count() == 0) continue;
            const bool ends_left = other.right() == other.end();
            if (search(other, other.begin(), other.left() - (ends_left && !other.closed())) ||
                (!ends_left && search(other, other.right(), other.end() - !other.closed())))
                return found;
        }
        return none;
    }

    struct Range {
        std::size_t begin, end;
    };
    struct Ranges {
        Range left, right;
    };

    /// The slots where segments begin that share no bead with the triangle behind the gap. What blocks from the left
    /// part lasts longest, since the next removals are on the right.
    static Ranges apart_from_triangle(const GapBuffer<Id>& own) {
        const std::size_t behind = own.end() - own.right(), wrapped = behind < 2 ? 2 - behind : 0;
        const bool closing_touches = !own.has_rear() && (own.left() - 1 == own.begin() || !own.closed());
        return {{own.begin() + wrapped, std::max(own.left(), std::size_t{2}) - 2},
                {own.right() + 2, own.end() - closing_touches}};
    }

    static bool meets(const GapBuffer<Id>& component, const Triangle& triangle, std::size_t slot) {
        const Segment segment{component.at(slot), component.at_number(component.number_after(slot))};
        return contact(triangle, segment) != Contact::none;
    }

    /// Too few segments for the filter to be worth its constants.
    bool is_small(const GapBuffer<Id>& own) const {
        return components_.size() == 1 && !own.has_rear() &&
               own.count() <= (is_placed_ ? most_unfiltered_later : most_unfiltered);
    }

    /// The first segment that meets the triangle, of all or the first ones.
    [[gnu::noinline]] Id try_without_filter(const GapBuffer<Id>& own, const Triangle& triangle) const {
        std::size_t most = is_small(own) ? most_unfiltered : most_tried_first;
        const auto [left, right] = apart_from_triangle(own);
        for (std::size_t slot = left.begin; slot < left.end && most > 0; ++slot, --most)
            if (meets(own, triangle, slot)) return own.bead(slot);
        for (std::size_t slot = right.begin; slot < right.end && most > 0; ++slot, --most)
            if (meets(own, triangle, slot)) return own.bead(slot);
        return none;
    }

    /// What is said of the first segment that meets the triangle among the candidates of a range.
    template <class Meets>
    Id search_positions(const Filter& filter, const Positions3& positions, std::size_t begin, std::size_t end,
                        Meets number_if_it_meets) const {
        while (begin < end) {
            const Candidates candidates = kernels_.find_candidates(filter, positions, begin, end);
            begin = candidates.first;
            for (std::uint32_t lanes = candidates.lanes; lanes != 0; lanes &= lanes - 1) {
                const std::size_t j = candidates.first + static_cast<std::size_t>(std::countr_zero(lanes));
                const Id number = number_if_it_meets(j);
                if (number != none) return number;
                begin = j + 1;
            }
        }
        return none;
    }

    Id search_slots(const GapBuffer<Id>& component, const Filter& filter, const Triangle& triangle,
                    std::size_t begin, std::size_t end) const {
        return search_positions(filter, positions_, begin, end, [&](std::size_t slot) {
            return meets(component, triangle, slot) ? component.bead(slot) : none;
        });
    }

    /// What mostly comes after a triangle behind the gap that is free: that of its other corners and the next bead,
    /// since its neighbour on the left was blocked before.
    std::optional<Corners> follower_of(const Corners& corners) const {
        const GapBuffer<Id>& own = components_[corners.component];
        if (own.end() < own.right() + 3) return std::nullopt;
        return Corners{corners.component, corners.before, corners.first, corners.last,
                       own.bead(own.right() + 2)};
    }

    /// The rear is read once for two triangles, since to place its atoms takes longer than to search them.
    [[gnu::noinline]] Id search_rear(const Corners& corners, const Filter& filter, const Triangle& triangle,
                                     std::optional<Corners> follower) {
        const GapBuffer<Id>& own = components_[corners.component];
        const std::span<const ChainAtom> rear = own.rear();
        const std::size_t closing = rear.size() - 1;
        const auto number_if_it_meets = [&](const Corners& of, const Triangle& t, std::size_t j) {
            const std::size_t number = own.rear_number() + j;
            return still_meets(of, t, number) ? static_cast<Id>(number) : none;
        };

        if (free_in_rear_ != corners) {
            const Triangle next = triangle_of(follower.value_or(corners));
            const Filter next_filter = follower ? filter_of(next, frame_) : filter;
            for (std::size_t from = 0; from < closing; from += RearPart::most) {
                const RearPart part(rear.subspan(from), frame_, kernels_.put_positions);
                const auto search_part = [&](const Corners& of, const Triangle& t, const Filter& f) {
                    return search_positions(f, part.positions(), 0, part.segments(), [&](std::size_t j) {
                        return number_if_it_meets(of, t, from + j);
                    });
                };
                const Id found = search_part(corners, triangle, filter);
                if (found != none) return found;
                if (follower && search_part(*follower, next, next_filter) != none) follower.reset();
            }
            free_in_rear_ = follower;
        }
        return own.closed() ? number_if_it_meets(corners, triangle, closing) : none;
    }

    /// Whether the segment that begins at a bead is there, shares no bead with a triangle and meets it.
    bool still_meets(const Corners& corners, const Triangle& triangle, std::size_t number) const {
        const GapBuffer<Id>& owner = owner_of(number);
        if (&owner == &components_[corners.component] && corners.touch(number)) return false;
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

    std::size_t number_after(const GapBuffer<Id>& component, std::size_t number) const {
        if (indexing_.index == nullptr) return component.number_after_bead(number);
        const SegmentIndex::Number next = indexing_.index->next(static_cast<SegmentIndex::Number>(number));
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

    /// Gives all segments to the index, where they are worth it.
    void fill_index() {
        std::size_t beads = 0;
        for (const GapBuffer<Id>& component : components_) beads += component.count();
        if (beads < indexing_.fewest_beads || frame_.scale == 0) indexing_.index = nullptr;
        if (indexing_.index == nullptr) return;
        for (const GapBuffer<Id>& component : components_) {
            component.for_each_segment([&](std::size_t slot) {
                const std::size_t next = component.next(slot);
                indexing_.index->add({component.bead(slot), component.bead(next)}, frame_(component.at(slot)),
                                     frame_(component.at(next)));
            });
        }
        indexing_.index->sort();
    }

    /// The first component that may have a free triangle now.
    std::size_t remove_middle(const Corners& corners) {
        components_[corners.component].remove_middle();
        if (indexing_.index != nullptr) {
            const Triangle triangle = triangle_of(corners);
            indexing_.index->replace(static_cast<SegmentIndex::Number>(corners.middle),
                                     {static_cast<SegmentIndex::Number>(corners.first),
                                      static_cast<SegmentIndex::Number>(corners.last)},
                                     frame_(triangle.t0), frame_(triangle.t2));
            if (indexing_.index->size() < indexing_.fewest_beads) indexing_.index = nullptr;
        }
        return reconsider(corners.component, corners.first, corners.middle);
    }

    /// The segments from two beads are one now, which begins at the first of them; what they blocked may be free.
    /// The first component that this, or the removal of the second bead, may have freed a triangle of.
    std::size_t reconsider(std::size_t c, std::size_t first, std::size_t middle) {
        for (Recent& recent : recent_)
            if (recent.number == first || recent.number == middle) recent.number = none;
        std::size_t lowest = c;
        for (std::size_t d = 0; d < components_.size(); ++d) {
            const bool any =
                components_[d].question_blocked_by(static_cast<Id>(first), static_cast<Id>(middle));
            if (any && d != c) components_[d].bridge_gap();
            if (any) lowest = std::min(lowest, d);
        }
        if (lowest != c) components_[c].bridge_gap();
        return lowest;
    }

    /// Where the slots are full of blocked triangles, those that reach into the rear are tried every time: nothing
    /// is remembered of them.
    bool remove_free_in_rear(std::size_t c) {
        GapBuffer<Id>& component = components_[c];
        if (!component.has_rear()) return false;
        const std::size_t count = component.count(), slots = component.end() - component.begin();
        const std::size_t triangles = component.closed() ? count : count - 2;
        for (std::size_t i = slots - std::min<std::size_t>(2, slots); i < triangles; ++i) {
            const auto number = [&](std::size_t place) { return component.number_at(place % count); };
            const Corners corners{c, number(i + count - 1), number(i), number(i + 1), number(i + 2)};
            if (is_blocked_anywhere(corners)) continue;
            recent_ = {};
            component.question_blocked_by(static_cast<Id>(corners.first), static_cast<Id>(corners.middle));
            component.remove_from_rear(corners.middle);
            free_in_rear_.reset();
            return true;
        }
        return false;
    }

    bool is_blocked_anywhere(const Corners& corners) {
        const GapBuffer<Id>& component = components_[corners.component];
        const Triangle triangle = triangle_of(corners);
        if (!is_placed_) place();
        const Filter filter = filter_of(triangle, frame_);
        const Id found =
            search_positions(filter, positions_, component.begin(), component.end(), [&](std::size_t slot) {
                return still_meets(corners, triangle, component.bead(slot)) ? component.bead(slot) : none;
            });
        return found != none || search_rear(corners, filter, triangle, std::nullopt) != none;
    }

    std::span<GapBuffer<Id>> components_;
    Positions3 positions_;
    Frame frame_{};
    Kernels kernels_;
    Indexing indexing_;
    bool is_placed_ = false;
    std::array<Recent, 2> recent_;
    int blocked_in_a_row_ = 0;
    /// A triangle that meets no segment of the rear but perhaps the closing one.
    std::optional<Corners> free_in_rear_;
};

} // namespace loopwise::reduce
