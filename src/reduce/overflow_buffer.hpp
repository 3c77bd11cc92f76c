// The beads of a chain that has more of them than slots.
#pragma once

#include "src/reduce/gap_buffer.hpp"

#include <algorithm>
#include <optional>

namespace loopwise::reduce {

/// A gap buffer of the first beads. The other beads, the overflow, are contiguous in the caller's atoms.
///
///     slots:  | left part | gap | right part | first of the overflow |    atoms:  | overflow |
///
/// While there is an overflow, the gap buffer is that of an open chain.
class OverflowBuffer : public GapBuffer<std::uint32_t> {
  public:
    using Id = std::uint32_t;

    /// Needs at least eight slots. One of them is for the bead behind the others.
    OverflowBuffer(std::span<ChainAtom> atoms, bool closed, const Slots<Id>& slots)
        : GapBuffer(atoms, false, 0, slots, std::min(atoms.size(), slots.count - 1)), is_loop_(closed),
          overflow_(end()) {
        follow();
    }

    bool has_overflow() const { return overflow_ < atoms_.size(); }
    std::span<const ChainAtom> overflow() const { return atoms_.subspan(overflow_); }
    /// The number of the first bead of the overflow.
    std::size_t overflow_number() const { return overflow_; }
    bool is_loop() const { return is_loop_; }
    /// The number of beads, with and without slots.
    std::size_t count_all() const { return count() + overflow().size(); }

    /// The number of the bead after another, or none if the other has gone. After the last bead comes the
    /// first.
    std::size_t number_after_bead(std::size_t number) const {
        if (number < overflow_) return GapBuffer::number_after_bead(number);
        return number + 1 < atoms_.size() ? number + 1 : bead(0);
    }

    /// The triangle behind the gap.
    Corners corners() const {
        Corners corners = GapBuffer::corners();
        if (left_ == 1) corners.before = atoms_.size() - 1;
        return corners;
    }
    /// The triangle that is behind the gap once the middle of this one is removed, if its beads have slots.
    std::optional<Corners> following(const Corners& corners) const {
        if (end_ < right_ + 3) return std::nullopt;
        return Corners{corners.before, corners.first, corners.last, bead(right_ + 2)};
    }

    /// The last slot begins a segment to the overflow.
    std::pair<Range, Range> apart_from_triangle() const {
        return {{0, std::max(left_, std::size_t{2}) - 2}, {right_ + 2, end_}};
    }

    /// Moves the gap on to the first triangle in question. Returns false if no such triangle has slots for
    /// its beads, or if the overflow is empty.
    bool seek() {
        while (!GapBuffer::seek())
            if (!take_from_overflow()) return false;
        return true;
    }

    /// Without a gap: the number of the bead at a place in the chain.
    std::size_t number_at(std::size_t place) const { return place < end_ ? bead(place) : overflow_ + (place - end_); }

    /// Without a gap: removes the middle of a triangle that reaches into the overflow. The beads of the
    /// overflow before it move up by one, and so do their numbers.
    void remove_from_overflow(std::size_t number) {
        if (number >= overflow_) {
            ChainAtom* const gone = &atoms_[number];
            std::copy_backward(&atoms_[overflow_], gone, gone + 1);
            renumber_blockers(number);
            ++overflow_;
        } else {
            if (number == bead(0)) {
                for (std::size_t slot = 1; slot < end_; ++slot) move(slot, slot - 1);
                left_ = std::max<std::size_t>(left_ - 1, 1);
            }
            --end_;
        }
        std::fill(s_.blocker + end_ - 2, s_.blocker + end_, blockers_.unknown);
        left_ = right_ = std::min(left_, end_ - 2);
        tested_ = end_;
        follow();
    }

    /// Moves the beads that are left to the front of the caller's atoms. Returns their number.
    std::size_t pack() {
        const std::size_t all = count_all(), with_slots = GapBuffer::pack();
        if (all < atoms_.size()) std::copy(overflow().begin(), overflow().end(), &atoms_[with_slots]);
        return all;
    }

  private:
    /// Sets the bead that follows the last slot.
    void follow() {
        follow_with(has_overflow() ? overflow_ : bead(0));
        closed_ = is_loop_ && !has_overflow();
    }

    /// Closes the gap and gives the free slots to beads of the overflow. Returns whether there is still an
    /// overflow and the next triangle has slots.
    bool take_from_overflow() {
        tested_ = std::max(tested_, right_) - (right_ - left_);
        std::size_t to = left_;
        for (std::size_t slot = right_; slot < end_; ++slot) move(slot, to++);
        right_ = left_;
        for (end_ = to; has_overflow() && end_ + 1 < s_.count; ++end_) {
            follow_with(overflow_++);
            blockers_[end_] = blockers_.unknown;
        }
        follow();
        return has_overflow() && end_ - right_ >= 2;
    }

    void renumber_blockers(std::size_t gone) {
        for (std::size_t slot = 0; slot < end_; ++slot) {
            const std::size_t blocker = blockers_[slot] & ~blockers_.in_question;
            if (blockers_[slot] != blockers_.unknown && blocker >= overflow_ && blocker < gone) ++blockers_[slot];
        }
    }

    bool is_loop_;
    std::size_t overflow_;
};

} // namespace loopwise::reduce
