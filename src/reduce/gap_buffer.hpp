// The beads of a component while it is reduced.
#pragma once

#include "src/reduce/kernels.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>
#include <utility>

namespace loopwise::reduce {

/// Arrays over slots; a slot holds a bead.
template <class Id> struct Slots {
    std::size_t count;
    float *x, *y, *z; ///< positions in units of the frame, with position_padding more, from place() on
    Id* bead;         ///< which bead it is: beads are numbered through all components
    Id* blocker;      ///< of the triangle that begins here: see GapBuffer
};

/// The beads that are left of a component, in a gap buffer.
///
///     slots:  | left part | gap | right part | first bead again |    atoms:  | rear |
///             begin       left  right        end                               rear   count
///
/// The search for a free triangle goes along the chain, and so does the gap: the last bead of the left part is
/// the first corner of the triangle that is tried, the middle corner comes right behind the gap. To remove it
/// is to make the gap longer by one slot. Neighbours stand side by side, and the segments that share no bead
/// with the triangle are two ranges, one in each part. A slot behind the right part repeats the position of
/// the first bead, for the segment that closes the component.
///
/// Where the slots do not suffice for all beads, the rest is the rear: it stands in the caller's atoms without a
/// hole and moves up when slots become free. The slot behind the right part then repeats the first of the rear.
///
/// For the triangle that begins at a bead, `blocker` is the bead where the segment begins that meets it. With
/// the bit `in_question` on top the triangle has to be tested: that segment is gone, but what took its place
/// is likely to block as well.
template <class Id> class GapBuffer {
  public:
    static constexpr Id in_question = Id(Id{1} << (std::numeric_limits<Id>::digits - 1));
    static constexpr Id unknown = std::numeric_limits<Id>::max();
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    /// The beads of `atoms`, which stay where they are, get the numbers from `first` on and the slots of the
    /// same numbers, as far as there are any.
    GapBuffer(std::span<ChainAtom> atoms, bool closed, std::size_t first, const Slots<Id>& slots)
        : s_(slots), atoms_(atoms), closed_(closed), first_(first), begin_(first), left_(first),
          right_(first), end_(first), tested_(first) {
        take_from_rear();
    }

    std::size_t count() const { return (left_ - begin_) + (end_ - right_) + (atoms_.size() - rear_); }
    bool closed() const { return closed_; }
    std::size_t begin() const { return begin_; }
    std::size_t left() const { return left_; }
    std::size_t right() const { return right_; }
    std::size_t end() const { return end_; }
    std::span<const ChainAtom> atoms() const { return atoms_; }
    /// The beads without slots, and the number of the first of them.
    std::span<const ChainAtom> rear() const { return atoms_.subspan(rear_); }
    std::size_t rear_number() const { return first_ + rear_; }
    bool has_rear() const { return rear_ < atoms_.size(); }
    /// One past the last number.
    std::size_t numbers_end() const { return first_ + atoms_.size(); }

    Id bead(std::size_t slot) const { return s_.bead[slot]; }
    PointR3 at(std::size_t slot) const { return at_number(s_.bead[slot]); }
    PointR3 at_number(std::size_t number) const { return model::position(atoms_[number - first_]); }
    Id& blocker(std::size_t slot) const { return s_.blocker[slot]; }
    /// The slot of the bead after another, around the end whether it is closed or not.
    std::size_t next(std::size_t slot) const {
        ++slot;
        if (slot == left_) slot = right_;
        return slot == end_ ? begin_ : slot;
    }
    /// Where a bead stands, or end() if it does not stand in a slot.
    std::size_t find(std::size_t number) const {
        for (const auto& [from, to] : {std::pair{begin_, left_}, std::pair{right_, end_}}) {
            const Id* const found = std::lower_bound(s_.bead + from, s_.bead + to, number);
            if (found != s_.bead + to && *found == number) return static_cast<std::size_t>(found - s_.bead);
        }
        return end_;
    }
    bool in_rear(std::size_t number) const { return number >= rear_number() && number < numbers_end(); }
    std::size_t first_number() const {
        return begin_ < end_ ? s_.bead[begin_ < left_ ? begin_ : right_] : rear_number();
    }
    std::size_t last_number() const {
        return has_rear() ? numbers_end() - 1 : s_.bead[(right_ < end_ ? end_ : left_) - 1];
    }
    /// The bead after that of a slot, around the end whether it is closed or not.
    std::size_t number_after(std::size_t slot) const {
        slot = slot + 1 == left_ ? right_ : slot + 1;
        if (slot != end_) return s_.bead[slot];
        return has_rear() ? rear_number() : first_number();
    }
    /// The bead after that with a number, or none if it is not left.
    std::size_t number_after_bead(std::size_t number) const {
        if (in_rear(number)) return number + 1 < numbers_end() ? number + 1 : first_number();
        const std::size_t slot = find(number);
        return slot != end_ ? number_after(slot) : none;
    }

    /// Calls visit() with the slot where each segment begins, in the order of the component.
    template <class Visit> void for_each_segment(Visit visit) const {
        std::size_t left = count() - (count() > 0 && !closed_);
        for (std::size_t slot = left_ > begin_ ? begin_ : right_; left > 0; slot = next(slot), --left)
            visit(slot);
    }

    /// Puts the beads at their positions in a frame, and zeros where a kernel reads but no bead is. Components are
    /// placed in their order.
    void place(const Frame& frame, PutPositions put_positions) {
        frame_ = frame;
        for (float* const row : {s_.x, s_.y, s_.z})
            std::fill(row + begin_, row + end_ + 1 + position_padding, 0.0F);
        if (count() == atoms_.size()) {
            const std::size_t slots = end_ - begin_;
            put_positions(frame, atoms_.first(slots), s_.x + begin_, s_.y + begin_, s_.z + begin_);
            return close_end();
        }
        for (const auto& [from, to] : {std::pair{begin_, left_}, std::pair{right_, end_}})
            for (std::size_t slot = from; slot < to; ++slot) put(slot, atoms_[s_.bead[slot] - first_]);
        close_end();
        bridge_gap();
    }

    /// Notes what blocks a triangle of the right part.
    void remember(std::size_t slot, Id blocker) {
        s_.blocker[slot] = blocker;
        tested_ = std::max(tested_, slot + 1);
    }

    /// Moves the gap on to the first triangle in question; false if there is none whose beads have slots.
    bool seek() {
        if (left_ == begin_ && right_ < end_) step();
        while (true) {
            if (end_ - right_ < 2 && has_rear() && !take_from_rear()) return false;
            if (end_ - right_ < 2 && !closed_) return false;
            if (s_.blocker[left_ - 1] >= in_question) return true;
            if (right_ == end_) return false;
            step();
        }
    }

    /// Moves the gap back, so that a slot of the left part becomes its last.
    void back_to(std::size_t slot) {
        if (slot + 1 < left_) tested_ = std::max(tested_, right_);
        while (left_ > slot + 1) move(--left_, --right_);
    }

    /// Takes the middle corner away, and the gap to the first triangle with new corners.
    void remove_middle() {
        if (right_ < end_)
            ++right_;
        else
            ++begin_, close_end();
        s_.blocker[left_ - 1] = unknown;
        if (left_ - begin_ >= 2) {
            s_.blocker[left_ - 2] = unknown;
            back_to(left_ - 2);
        } else if (right_ < end_) {
            s_.blocker[end_ - 1] = unknown;
        }
    }

    /// Puts all triangles in question that one of two beads' segments blocked, and the gap back to the first
    /// of them. Whether there are any.
    bool question_blocked_by(Id first, Id second) {
        const bool on_the_right = question_within(right_, tested_, first, second) < tested_;
        const std::size_t slot = question_within(begin_, left_, first, second);
        if (slot < left_) back_to(slot);
        return slot < left_ || on_the_right;
    }

    /// Repeats the position behind the gap before it, for the segment between them.
    void bridge_gap() {
        if (left_ < right_) copy_position(right_, left_);
    }

    /// Where no slot is free: the bead at a place of the component, which has no gap then.
    std::size_t number_at(std::size_t place) const {
        const std::size_t slots = end_ - begin_;
        return place < slots ? s_.bead[begin_ + place] : rear_number() + (place - slots);
    }

    /// Where no slot is free: takes away the middle of a triangle that reaches into the rear. The beads of the
    /// rear before it move up by one, and so do their numbers.
    void remove_from_rear(std::size_t number) {
        const std::size_t old_rear = rear_number();
        if (in_rear(number)) {
            ChainAtom* const gone = &atoms_[number - first_];
            std::copy_backward(&atoms_[rear_], gone, gone + 1);
            ++rear_;
            for (std::size_t slot = begin_; slot < end_; ++slot) {
                const std::size_t blocker = s_.blocker[slot] & ~in_question;
                if (s_.blocker[slot] != unknown && blocker >= old_rear && blocker < number)
                    ++s_.blocker[slot];
            }
        } else if (number == s_.bead[begin_]) {
            ++begin_;
        } else {
            --end_;
        }
        const std::size_t changed = end_ - std::min<std::size_t>(2, end_ - begin_);
        std::fill(s_.blocker + changed, s_.blocker + end_, unknown);
        left_ = right_ = std::max(std::min(left_, changed), begin_);
        close_end();
    }

    /// Moves the beads that are left to the front of the caller's atoms.
    void pack() {
        if (count() == atoms_.size()) return;
        ChainAtom* to = atoms_.data();
        for (const auto& [from, end] : {std::pair{begin_, left_}, std::pair{right_, end_}})
            for (std::size_t slot = from; slot < end; ++slot)
                *to++ = ChainAtom(atoms_[s_.bead[slot] - first_]);
        std::copy(atoms_.begin() + static_cast<std::ptrdiff_t>(rear_), atoms_.end(), to);
    }

  private:
    void step() {
        if (left_ < right_) move(right_, left_);
        ++left_, ++right_;
    }

    /// Closes the gap and gives the slots that are free to beads of the rear. Whether the triangle behind the gap
    /// has its beads in slots.
    bool take_from_rear() {
        if (begin_ == end_) begin_ = left_ = right_ = end_ = tested_ = first_;
        tested_ = std::max(tested_, right_) - (right_ - left_);
        std::size_t to = left_;
        for (std::size_t slot = right_; slot < end_; ++slot) move(slot, to++);
        right_ = left_;
        for (; rear_ < atoms_.size() && to + 1 < s_.count; ++rear_, ++to) {
            if (is_placed()) put(to, atoms_[rear_]);
            s_.bead[to] = static_cast<Id>(rear_number());
            s_.blocker[to] = unknown;
        }
        end_ = to;
        close_end();
        if (left_ == begin_ && right_ < end_) step();
        return !has_rear() || end_ - right_ >= 2;
    }

    /// Repeats the position that follows that of the last slot.
    void close_end() {
        if (has_rear()) {
            if (is_placed()) put(end_, atoms_[rear_]);
        } else if (begin_ < end_) {
            copy_position(begin_ < left_ ? begin_ : right_, end_);
        }
    }

    /// Where the scale is 0, all positions are, and stay so.
    bool is_placed() const { return frame_.scale != 0; }

    void put(std::size_t slot, const ChainAtom& atom) {
        const PointR3 p = frame_(model::position(atom));
        s_.x[slot] = static_cast<float>(p.x);
        s_.y[slot] = static_cast<float>(p.y);
        s_.z[slot] = static_cast<float>(p.z);
    }

    void copy_position(std::size_t from, std::size_t to) {
        if (!is_placed()) return;
        s_.x[to] = s_.x[from], s_.y[to] = s_.y[from], s_.z[to] = s_.z[from];
    }

    void move(std::size_t from, std::size_t to) {
        copy_position(from, to);
        s_.bead[to] = s_.bead[from];
        s_.blocker[to] = s_.blocker[from];
    }

    /// The first slot of those that were put in question.
    std::size_t question_within(std::size_t from, std::size_t to, Id first, Id second) {
        const Id* const blocker = s_.blocker;
        Id any = 0; // of the size of what is compared, or it would be done one by one
        for (std::size_t slot = from; slot < to; ++slot)
            any = static_cast<Id>(any | (blocker[slot] == first) | (blocker[slot] == second));
        if (any == 0) return to;
        std::size_t found = to;
        for (std::size_t slot = to; slot-- > from;)
            if (blocker[slot] == first || blocker[slot] == second)
                s_.blocker[slot] = static_cast<Id>(first | in_question), found = slot;
        return found;
    }

    Slots<Id> s_;
    Frame frame_{};
    std::span<ChainAtom> atoms_;
    bool closed_;
    std::size_t first_; ///< the number of the first of the atoms, and its slot at the beginning
    std::size_t begin_, left_, right_, end_;
    std::size_t rear_ = 0;
    std::size_t tested_; ///< no triangle of the right part that begins here or later has a blocker
};

} // namespace loopwise::reduce
