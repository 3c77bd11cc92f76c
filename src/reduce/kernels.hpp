// The kernels of the filter: many segments, boxes or directions at a time, in single precision.
#pragma once

#include "src/model/instruction_sets.hpp"
#include "src/reduce/filter.hpp"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace loopwise::reduce {

/// Positions in units of a frame, coordinate by coordinate. Segment j runs from position j to j + 1.
struct Positions3 {
    const float *x, *y, *z;
};

/// Number of floats that a kernel may read beyond the last position.
constexpr std::size_t position_padding = 32;

/// An index of segments is searched by groups of sixteen, whose first coordinates come first.
constexpr std::size_t group_size = 16;
using GroupRow = std::array<float, group_size>;

/// Segments by both ends.
struct alignas(64) SegmentGroup {
    GroupRow x0, y0, z0, x1, y1, z1;
};

/// Boxes around segments, by the sums and the differences of their sides.
struct alignas(64) BoxGroup {
    GroupRow x, y, z, dx, dy, dz;
};

/// Directions in which one coordinate is 1 and the others are v and w.
struct alignas(64) DirectionGroup {
    GroupRow v, w;
};

/// The members of a group that are candidates: first + j for bit j.
struct Candidates {
    std::size_t first;
    std::uint32_t lanes;
};

/// Finds the first group with candidates among the segments from `begin` up to `end`, or {end, 0}. The search
/// goes on after the last candidate.
using FindCandidates = Candidates (*)(const Filter& filter, const Positions3& positions, std::size_t begin,
                                      std::size_t end);

/// Finds the first of the groups from `begin` up to `end` that has candidates: its index and their lanes, or
/// {end, 0}.
///
/// A segment is a candidate if the filter cannot prove that contact() finds nothing; a box, if it may hold a
/// candidate whose determinant is not zero; a direction, if a segment along it may be parallel to the
/// triangle.
template <class What, class Group>
using FindInGroups = Candidates (*)(const What& what, const Group* groups, std::size_t begin,
                                    std::size_t end);

/// Computes the positions of atoms in a frame, a row for each coordinate.
using PutPositions = void (*)(const Frame& frame, std::span<const ChainAtom> atoms, float* x, float* y,
                              float* z);

/// The kernels of an instruction set.
struct Kernels {
    FindCandidates find_candidates;
    FindInGroups<Filter, SegmentGroup> find_segments;
    FindInGroups<BoxFilter, BoxGroup> find_boxes;
    FindInGroups<ParallelQuery, DirectionGroup> find_directions;
    PutPositions put_positions;
};
const Kernels& kernels(model::InstructionSet set);

/// The first candidate from `begin` up to `end` of which is_met() is true, or `end`.
template <class IsMet>
std::size_t find_met(FindCandidates find_candidates, const Filter& filter, const Positions3& positions,
                     std::size_t begin, std::size_t end, IsMet is_met) {
    while (begin < end) {
        const Candidates candidates = find_candidates(filter, positions, begin, end);
        begin = candidates.first;
        for (std::uint32_t lanes = candidates.lanes; lanes != 0; lanes &= lanes - 1) {
            const std::size_t j = candidates.first + static_cast<std::size_t>(std::countr_zero(lanes));
            if (is_met(j)) return j;
            begin = j + 1;
        }
    }
    return end;
}

} // namespace loopwise::reduce
