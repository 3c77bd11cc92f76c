// The beads of a component while it is reduced.
#pragma once

#include "src/reduce/blocker_memory.hpp"
#include "src/reduce/slots.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>
#include <span>
#include <utility>

namespace loopwise::reduce {

/// A triangle of three beads in a row, by their numbers, and the bead before them.
struct Corners {
    std::size_t before, first, middle, last;

    /// Whether the segment that begins at a bead shares a bead with the triangle.
    bool touch(std::size_t number) const {
        return number == before || number == first || number == middle || number == last;
    }
    bool operator==(const Corners&) const = default;
};

/// The beads that are left of a component, in a gap buffer.
///
///     slots:  | left part | gap | right part | first bead again |
///             begin       left  right        end
///
/// The gap moves along the chain with the search for a free triangle. The last bead of the left part is the
/// first corner of the triangle that is tested; the middle corner is right behind the gap. Removing the
/// middle makes the gap longer by one slot. Neighbours are in adjacent slots, and the segments that share no
/// bead with the triangle are two ranges of slots, one in each part. The slot behind the right part repeats
/// the first bead, for the segment that closes the component. A component without beads has no such slot.
///
/// Beads are numbered through all components and keep their numbers, which ascend along the slots.
template <class Id> class GapBuffer {
  public:
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    /// The beads get the numbers from `first` on and the slots of the same numbers. The atoms stay where they
    /// are.
    GapBuffer(std::span<ChainAtom> atoms, bool closed, std::size_t first, const Slots<Id>& slots)
        : GapBuffer(atoms, closed, first, slots, atoms.size()) {
        if (!atoms.empty()) follow_with(first);
    }

    std::size_t count() const { return (left_ - begin_) + (end_ - right_); }
    bool closed() const { return closed_; }
    std::size_t begin() const { return begin_; }
    std::size_t left() const { return left_; }
    std::size_t right() const { return right_; }
    std::size_t end() const { return end_; }
    std::span<const ChainAtom> atoms() const { return atoms_; }
    /// One past the last number.
    std::size_t numbers_end() const { return first_ + atoms_.size(); }

    Id bead(std::size_t slot) const { return s_.bead[slot]; }
    PointR3 at(std::size_t slot) const { return at_number(s_.bead[slot]); }
    PointR3 at_number(std::size_t number) const { return model::position(atoms_[number - first_]); }
    Positions3 positions() const { return {s_.x, s_.y, s_.z}; }
    const BlockerMemory<Id>& blockers() const { return blockers_; }

    /// The slot of the next bead; of the last bead, that of the first, also in an open component.
    std::size_t next(std::size_t slot) const {
        ++slot;
        if (slot == left_) slot = right_;
        return slot == end_ ? begin_ : slot;
    }
    /// The number of the bead after that in a slot; after the last bead comes the first.
    Id number_after(std::size_t slot) const { return s_.bead[slot + 1 == left_ ? right_ : slot + 1]; }
    /// The number of the bead after another, or none if the other has no slot.
    std::size_t number_after_bead(std::size_t number) const {
        for (const auto& [from, to] : {std::pair{begin_, left_}, std::pair{right_, end_}}) {
            const Id* const found = std::lower_bound(s_.bead + from, s_.bead + to, number);
            if (found != s_.bead + to && *found == number)
                return number_after(static_cast<std::size_t>(found - s_.bead));
        }
        return none;
    }

    /// The triangle behind the gap.
    Corners corners() const {
        const std::size_t first = left_ - 1, middle = next(first);
        const std::size_t before = first > begin_ ? first - 1 : (right_ < end_ ? end_ : left_) - 1;
        return {s_.bead[before], s_.bead[first], s_.bead[middle], s_.bead[next(middle)]};
    }
    Triangle triangle(const Corners& corners) const {
        return {at_number(corners.first), at_number(corners.middle), at_number(corners.last)};
    }

    struct Range {
        std::size_t begin, end;
    };
    /// The slots, in each part, where the segments begin that share no bead with the triangle behind the gap.
    std::pair<Range, Range> apart_from_triangle() const {
        const std::size_t behind = end_ - right_, wrapped = behind < 2 ? 2 - behind : 0;
        const bool closing_touches = left_ - 1 == begin_ || !closed_;
        return {{begin_ + wrapped, std::max(left_, std::size_t{2}) - 2},
                {right_ + 2, end_ - closing_touches}};
    }

    /// Whether the segment that begins in a slot meets a triangle.
    bool meets(const Triangle& triangle, std::size_t slot) const {
        return contact(triangle, {at(slot), at_number(number_after(slot))}) != Contact::none;
    }

    /// Calls visit() with the slot where each segment begins, in the order of the component.
    template <class Visit> void for_each_segment(Visit visit) const {
        std::size_t left = count() - (count() > 0 && !closed_);
        for (std::size_t slot = begin_; left > 0; slot = next(slot), --left) visit(slot);
    }

    /// Computes the positions of the beads in a frame. Writes zeros where a kernel reads but no bead is, so
    /// components must be placed in their order.
    void place(const Frame& frame, PutPositions put_positions) {
        frame_ = frame;
        for (float* const row : {s_.x, s_.y, s_.z})
            std::fill(row + begin_, row + end_ + 1 + position_padding, 0.0F);
        if (begin_ == end_) return;
        if (count() == atoms_.size())
            put_positions(frame, atoms_, s_.x + begin_, s_.y + begin_, s_.z + begin_);
        else
            for (const auto& [from, to] : {std::pair{begin_, left_}, std::pair{right_, end_}})
                for (std::size_t slot = from; slot < to; ++slot) put(slot);
        put(end_);
        bridge_gap();
    }

    /// Remembers the blocker of the triangle that begins in a slot of the right part.
    void remember(std::size_t slot, Id blocker) {
        blockers_[slot] = blocker;
        tested_ = std::max(tested_, slot + 1);
    }

    /// Moves the gap on to the first triangle in question; false if there is none.
    bool seek() {
        while (end_ - right_ >= 2 || closed_) {
            if (blockers_.is_in_question(left_ - 1)) return true;
            if (right_ == end_) return false;
            step();
        }
        return false;
    }

    /// Removes the middle corner and moves the gap back to the first triangle with new corners.
    void remove_middle() {
        if (right_ < end_)
            ++right_;
        else
            ++begin_, follow_with(s_.bead[begin_]);
        blockers_[left_ - 1] = blockers_.unknown;
        if (left_ - begin_ >= 2) {
            blockers_[left_ - 2] = blockers_.unknown;
            back_to(left_ - 2);
        } else if (right_ < end_) {
            blockers_[end_ - 1] = blockers_.unknown;
        }
    }

    /// Marks all triangles that a segment from one of two beads blocked as in question, and moves the gap
    /// back to the first of them. Returns whether there are any.
    bool question_blocked_by(std::size_t first, std::size_t second) {
        const Id one = static_cast<Id>(first), other = static_cast<Id>(second);
        const bool on_the_right = blockers_.question(right_, tested_, one, other) < tested_;
        const std::size_t slot = blockers_.question(begin_, left_, one, other);
        if (slot < left_) back_to(slot);
        return slot < left_ || on_the_right;
    }

    /// Copies the position behind the gap to the slot after the left part, for the segment across the gap.
    void bridge_gap() {
        if (left_ < right_) copy_position(right_, left_);
    }

    /// Moves the beads that are left to the front of the caller's atoms. Returns their number.
    std::size_t pack() {
        ChainAtom* to = atoms_.data();
        if (count() < atoms_.size())
            for (const auto& [from, end] : {std::pair{begin_, left_}, std::pair{right_, end_}})
                for (std::size_t slot = from; slot < end; ++slot)
                    *to++ = ChainAtom(atoms_[s_.bead[slot] - first_]);
        return count();
    }

  protected:
    /// Only the first atoms have slots.
    GapBuffer(std::span<ChainAtom> atoms, bool closed, std::size_t first, const Slots<Id>& slots,
              std::size_t with_slots)
        : s_(slots), blockers_(slots.blocker), atoms_(atoms), closed_(closed), first_(first), begin_(first),
          left_(first + (with_slots > 0)), right_(left_), end_(first + with_slots), tested_(left_) {
        std::iota(s_.bead + begin_, s_.bead + end_, static_cast<Id>(first));
        std::fill(s_.blocker + begin_, s_.blocker + end_, blockers_.unknown);
    }

    /// Sets the bead that follows that of the last slot.
    void follow_with(std::size_t number) {
        s_.bead[end_] = static_cast<Id>(number);
        put(end_);
    }

    void step() {
        if (left_ < right_) move(right_, left_);
        ++left_, ++right_;
    }

    /// Moves the gap back until a slot of the left part is the last of that part.
    void back_to(std::size_t slot) {
        if (slot + 1 < left_) tested_ = std::max(tested_, right_);
        while (left_ > slot + 1) move(--left_, --right_);
    }

    void move(std::size_t from, std::size_t to) {
        copy_position(from, to);
        s_.bead[to] = s_.bead[from];
        blockers_[to] = blockers_[from];
    }

    void put(std::size_t slot) {
        if (!is_placed()) return;
        const PointR3 p = frame_(at(slot));
        s_.x[slot] = static_cast<float>(p.x);
        s_.y[slot] = static_cast<float>(p.y);
        s_.z[slot] = static_cast<float>(p.z);
    }
    void copy_position(std::size_t from, std::size_t to) {
        if (!is_placed()) return;
        s_.x[to] = s_.x[from], s_.y[to] = s_.y[from], s_.z[to] = s_.z[from];
    }
    /// With the scale 0 all positions are 0 and need no copy.
    bool is_placed() const { return frame_.scale != 0; }

    Slots<Id> s_;
    BlockerMemory<Id> blockers_;
    Frame frame_{};
    std::span<ChainAtom> atoms_;
    bool closed_;
    std::size_t first_; ///< the number of the first of the atoms, and its slot at the beginning
    std::size_t begin_, left_, right_, end_;
    std::size_t tested_; ///< no triangle of the right part that begins here or later has a blocker
};

} // namespace loopwise::reduce
