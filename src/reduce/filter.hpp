// The filter: proves that contact() finds nothing between a triangle and a segment, a box of segments or the
// segments of a direction. What it cannot prove out of reach is a candidate and goes to contact().
#pragma once

#include "src/reduce/frame.hpp"
#include "src/reduce/intersection.hpp"

#include <array>
#include <limits>

namespace loopwise::reduce {

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

/// What boxes need beside it: the gradient of p + q, the margins of sums of two p and two p + q, and the box
/// around the triangle, by the sum of its sides and by their difference with what both need to be apart.
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

/// Query for the directions that may be parallel to a triangle. With d of largest coordinate 1 and v and w
/// after it, the candidates are those with |one + v d.v + w d.w| <= most.
struct ParallelQuery {
    float one, v, w, most;
};

/// The bound of a ParallelQuery: a segment along d, in whose largest coordinate it is no shorter than
/// `shortest`, may have a determinant that is zero or too small for contact() to be sure of t, u and v where
/// |n d| is at most this.
float most_parallel(const Filter& filter, float shortest);

} // namespace loopwise::reduce
