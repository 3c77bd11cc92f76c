// The filter: proves for many segments at a time that contact() finds nothing between them and a triangle,
// from single-precision positions. What it cannot prove out of reach is a candidate and goes to contact().
#pragma once

#include "src/model/instruction_sets.hpp"
#include "src/reduce/intersection.hpp"

#include <array>
#include <cstdint>
#include <limits>
#include <span>

namespace loopwise::reduce {

/// Where the beads are: in units of the frame, every finite coordinate lies between -1 and 1. The scale is
/// a power of two, which costs no bits.
struct Frame {
    PointR3 centre;
    double scale; ///< 0 where products of coordinates could overflow or underflow in contact()

    PointR3 operator()(PointR3 p) const {
        const PointR3 d = p - centre;
        return {d.x * scale, d.y * scale, d.z * scale};
    }
};

/// Positions in units of a frame, coordinate by coordinate. Segment j runs from position j to j + 1.
struct Positions3 {
    const float *x, *y, *z;
};

/// What a kernel may read beyond the last position.
constexpr std::size_t position_padding = 32;

/// An affine function of a position, in single precision.
struct Affine {
    float x, y, z, constant;
};

/// What the filter knows of a triangle. With T0, b = T1 - T0, c = T2 - T0 and n = b x c, a point S has the
/// height h = n(S - T0) and the coordinates p = (c x n)(S - T0) along b and q = (n x b)(S - T0) along c, all
/// in multiples of |n|^2 for want of a division: a segment from (h0, p0, q0) to (h1, p1, q1) has the
/// determinant h0 - h1 and meets the plane at
///
///     t = h0/(h0 - h1),  u = (p0 h1 - p1 h0)/(h1 - h0)/|n|^2,  v = (q0 h1 - q1 h0)/(h1 - h0)/|n|^2.
///
/// contact() finds nothing when the determinant is not zero and one of t, u, v and u + v lies outside of
/// [0, 1] by more than a tolerance. The margins say how much further outside it has to be for the filter, so
/// that no rounding matters; filter.cpp derives them.
struct Filter {
    Affine height, along_c, along_b;
    float parallel; ///< a determinant of at most this size may be zero
    float side;     ///< of the heights of both ends
    float squared;  ///< |n|^2
    float slab_v;   ///< how far from |n|^2 a sum of two q is within the triangle's
    float slack, edge_u, edge_v, whole, edge_w;
    float n_size, b_size, c_size; ///< sums of the sizes of the components

    bool has_normal() const { return parallel < std::numeric_limits<float>::infinity(); }
};

Filter filter_of(const Triangle& triangle, const Frame& frame);

/// What boxes need beside it: the gradient of p + q, the margins of sums of two p and two p + q, and the box around
/// the triangle, by the sum of its sides and by their difference with what both need to be apart.
struct BoxFilter : Filter {
    BoxFilter(const Filter& filter, const Triangle& in_frame);
    Affine along_both;
    float slab_u, slab_w;
    std::array<float, 3> sum, room;
};

/// How far outside of [0, 1] a segment is where the filter drops it: ten tolerances for what contact()
/// leaves early, ten more for its rounding, and a quarter for that of numbers the filter multiplies by.
constexpr float beyond = 2.5e-4F;
static_assert(beyond > 20 * EPS);

/// Two heights have the same sign, and the smaller is more than `beyond` times their difference, where
/// the size of their sum is more than this times that of their difference.
constexpr float side_factor = 1 + 2 * beyond;

/// The members of a group that are candidates: first + j for bit j.
struct Candidates {
    std::size_t first;
    std::uint32_t lanes;
};

/// The first group with candidates among the segments from `begin` up to `end`, or {end, 0}. The search goes on
/// after the last candidate.
using FindCandidates = Candidates (*)(const Filter& filter, const Positions3& positions, std::size_t begin,
                                      std::size_t end);

/// What an index of segments is searched by: sixteen of a kind in one place, their first coordinates first.
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

/// What a direction is asked for: the candidates are those with |one + v d.v + w d.w| <= most.
struct Turn {
    float one, v, w, most;
};

/// The first of the groups from `begin` up to `end` that has candidates, `first`, and which of it they are; or
/// {end, 0}.
///
/// Boxes that the filter proves to hold no segment that meets the triangle, unless its determinant is zero, are no
/// candidates.
template <class What, class Group>
using FindInGroups = Candidates (*)(const What& what, const Group* groups, std::size_t begin,
                                    std::size_t end);

/// A determinant of size |d| n, for a segment along d whose largest coordinate is 1 and which is no shorter than
/// `shortest` in this coordinate, may be zero or too small for contact() to be sure of t, u and v where n d is at
/// most this.
float most_turn(const Filter& filter, float shortest);

/// Puts positions of atoms in a frame to rows.
using PutPositions = void (*)(const Frame& frame, std::span<const ChainAtom> atoms, float* x, float* y,
                              float* z);

/// The versions of an instruction set.
struct Kernels {
    FindCandidates find_candidates;
    FindInGroups<Filter, SegmentGroup> find_segments;
    FindInGroups<BoxFilter, BoxGroup> find_boxes;
    FindInGroups<Turn, DirectionGroup> find_directions;
    PutPositions put_positions;
};
Kernels kernels(model::InstructionSet set);

/// What the kernels of a set equal to the last bit, said one by one. Where there is an instruction for it,
/// products are rounded once with the sum that follows them; the margins cover either way.
Kernels statement(model::InstructionSet set);

} // namespace loopwise::reduce
