// Triangle elimination on a chain that has more beads than slots.
#pragma once

#include "src/reduce/overflow_buffer.hpp"

#include <optional>

namespace loopwise::reduce {

/// Positions of some beads of an overflow, for one search.
struct OverflowPart {
    static constexpr std::size_t most_segments = 512;
    static constexpr std::size_t row = most_segments + 1 + position_padding;
    float x[row], y[row], z[row];
};

/// Gives the same result as Elimination. Every triangle is also tested against the overflow, whose positions
/// are computed again for each search, 512 segments at a time. Each search tests two triangles, since
/// computing the positions takes longer than testing them. When all beads have slots, Elimination does the
/// rest.
class OverflowElimination {
  public:
    OverflowElimination(std::span<ChainAtom> atoms, bool closed, const Slots<std::uint32_t>& slots,
                        const Kernels& kernels);
    /// Returns the number of beads that are left, at the front of the atoms.
    std::size_t run();

  private:
    using Id = OverflowBuffer::Id;
    static constexpr Id unknown = BlockerMemory<Id>::unknown;

    bool is_blocked(const Corners& corners);
    Id find_blocker(const Corners& corners, const Triangle& triangle, Id known);
    /// Returns a segment of the overflow that blocks a triangle, or `unknown`. Tests the likely next
    /// triangle, the follower, with it.
    Id find_in_overflow(const Corners& corners, const Triangle& triangle, const Filter& filter,
                        std::optional<Corners> follower);
    /// When all triangles in slots are blocked: tests those that reach into the overflow, whose blockers are
    /// not remembered. Removes the middle of the first free one. Returns whether there was one.
    bool remove_free_in_overflow();
    bool is_blocked_anywhere(const Corners& corners);
    /// Whether the segment that begins at a bead exists, shares no bead with a triangle and meets it.
    bool meets(const Corners& corners, const Triangle& triangle, std::size_t number) const;

    OverflowBuffer beads_;
    Kernels kernels_;
    Frame frame_;
    /// A triangle that meets no segment of the overflow, except perhaps the closing one.
    std::optional<Corners> free_in_overflow_;
};

} // namespace loopwise::reduce
