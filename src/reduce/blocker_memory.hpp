// Memory of which segment blocked which triangle.
#pragma once

#include <cstddef>
#include <limits>

namespace loopwise::reduce {

/// Blocker of the triangle that begins in each slot: the number of the bead where the blocking segment
/// begins.
///
/// A triangle stays blocked while its corners and its blocker exist. Its entry is `unknown` when the corners
/// are new. It has the bit `in_question` when the blocker has gone: the segment that replaced it is likely to
/// block as well.
template <class Id> class BlockerMemory {
  public:
    static constexpr Id in_question = Id(Id{1} << (std::numeric_limits<Id>::digits - 1));
    static constexpr Id unknown = std::numeric_limits<Id>::max();

    explicit BlockerMemory(Id* of_slot) : of_slot_(of_slot) {}

    Id& operator[](std::size_t slot) const { return of_slot_[slot]; }
    bool is_in_question(std::size_t slot) const { return of_slot_[slot] >= in_question; }

    /// Marks the triangles that a segment from one of two beads blocked as in question: one segment, which
    /// begins at the first bead, has replaced both. Returns the first slot that was marked, or `end`.
    std::size_t question(std::size_t begin, std::size_t end, Id first, Id second) const {
        const Id* const of_slot = of_slot_;
        Id any = 0; // as wide as the entries, so that the compiler compares several at a time
        for (std::size_t slot = begin; slot < end; ++slot)
            any = static_cast<Id>(any | (of_slot[slot] == first) | (of_slot[slot] == second));
        if (any == 0) return end;
        std::size_t found = end;
        for (std::size_t slot = end; slot-- > begin;)
            if (of_slot[slot] == first || of_slot[slot] == second)
                of_slot_[slot] = static_cast<Id>(first | in_question), found = slot;
        return found;
    }

  private:
    Id* of_slot_;
};

} // namespace loopwise::reduce
