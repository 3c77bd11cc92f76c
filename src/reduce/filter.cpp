#include "src/reduce/filter.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace loopwise::reduce {
namespace {

/// A triangle as flat as this blocks nothing that the filter could tell.
constexpr float least_normal = 0x1p-30F;

struct Vector {
    float x, y, z;
};

Vector narrow(PointR3 v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}
Vector cross(Vector a, Vector b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
float dot(Vector a, Vector b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
float sum_of_sizes(Vector v) { return std::fabs(v.x) + std::fabs(v.y) + std::fabs(v.z); }

/// The function that is 0 at the origin and grows along the gradient.
Affine affine(Vector gradient, Vector origin) {
    return {gradient.x, gradient.y, gradient.z, -dot(gradient, origin)};
}

} // namespace

// Rounding, in units of the frame: sizes of coordinates are at most 1, of differences at most 2. Let e =
// 2^-24 and E = 2^-53 be the half units in the last place of a float and a double, |.|1 the sum of sizes, and
// N = |n|1, B = |b|1, C = |c|1. No component of n is larger than 2 min(B, C).
//
// Height. Its gradient is n, from doubles, rounded: e N times |S - T0| <= 2 is 2 e N. Its constant: three
// products, two sums and the rounded T0, less than 4 e N. Its value: the rounded S, three products and three
// sums of terms below 2 N, less than 7.5 e N. In all less than 14 e N.
//   parallel: a difference of two, 28 e N, and its own rounding, 4 e N: 32 e N.
//   side: a sum and a difference, 56 e N, and three roundings of numbers below 4 N: 68 e N.
//
// Along c. Its gradient is n x b: with both rounded and a product and a difference, less than 4 e N B, times
// 2; its constant and its value as above for a gradient of at most N B: 4 and 7.5. In all less than 20 e N B.
// Along b: 20 e N C.
//   slab: two sums, 80 e N B, four roundings of numbers below 4 N B, and the error of |n|^2, which is at most
//   6 e |n|^2 < 12 e N B, twice: 120 e N B.
//   slab_w: both.
//   edge_u: u is p0 h1 - p1 h0 with |p| <= 2 N C and |h| <= 2 N: 2 (2 * 14 + 2 * 20) e N^2 C and three
//   roundings of numbers below 4 N^2 C: 148 e N^2 C. edge_v alike, with B for C.
//   edge_w: both, a rounding of their sum, and |n|^2 <= 2 N min(B, C) <= N (B + C) times the error of the
//   drop, 32 e N: 188 e N^2 (B + C).
//
// Boxes. A coordinate errs by e, a sum or difference of two by 4 e, a side of a box around boxes by 5 e, a
// sum or difference of two such by 12 e. The value in the middle and the spread err by 37 e N + 20 e N, for p
// and q by 49 e N B + 27 e N B, where a sum and a difference of two values come to 56 and 80 above: the
// margins suffice. Along an axis it is 12 e twice, and less than 20 e for the triangle's sides and for
// comparing.
//
// Numbers that are only wrong by a factor, |n|^2 in `slack` and `whole` or a product that is rounded again,
// are within 20 e of what they should be, which the last quarter of `beyond` covers two hundred times over.
//
// contact() itself errs by less than 9 E |a|1 B C <= 54 E B C in the determinant and by 10 E B C |r|1 <= 60 E
// B C, 10 E C |a|1 |r|1 <= 360 E C and 360 E B in the numerators of t, u and v. A determinant of more than
// 2e-8 (B + C), with B C <= 3 (B + C), therefore has a relative error below 1e-6, so that it is not zero, and
// t, u and v are wrong by half a tolerance at most, apart from that factor.
//
// Underflow: N >= 2^-30 makes every margin at least 2^-16 * 2^-90, and what underflows is below 2^-126 * 16.
constexpr float e = 0x1p-24F;
constexpr float parallel_margin = 64 * e, side_margin = 128 * e, slab_margin = 128 * e, edge_margin = 256 * e;
constexpr float box_margin = 64 * e;
constexpr float least_determinant = 2e-8F;

Filter filter_of(const Triangle& triangle, const Frame& frame) {
    const PointR3 t0 = frame(triangle.t0);
    const PointR3 db = triangle.t1 - triangle.t0, dc = triangle.t2 - triangle.t0;
    const PointR3 b2{db.x * frame.scale, db.y * frame.scale, db.z * frame.scale};
    const PointR3 c2{dc.x * frame.scale, dc.y * frame.scale, dc.z * frame.scale};
    const Vector n =
        narrow({b2.y * c2.z - b2.z * c2.y, b2.z * c2.x - b2.x * c2.z, b2.x * c2.y - b2.y * c2.x});
    const Vector b = narrow(b2), c = narrow(c2), origin = narrow(t0);

    const float n_size = sum_of_sizes(n), b_size = sum_of_sizes(b), c_size = sum_of_sizes(c);
    const float squared = dot(n, n), edge = edge_margin * n_size * n_size;
    Filter f;
    f.height = affine(n, origin);
    f.along_c = affine(cross(n, b), origin);
    f.along_b = affine(cross(c, n), origin);
    f.parallel = n_size >= least_normal ? parallel_margin * n_size + least_determinant * (b_size + c_size)
                                        : std::numeric_limits<float>::infinity();
    f.side = side_margin * n_size;
    f.squared = squared;
    f.slab_v = squared * side_factor + slab_margin * n_size * b_size;
    f.slack = beyond * squared;
    f.edge_u = edge * c_size;
    f.edge_v = edge * b_size;
    f.whole = squared + f.slack;
    f.edge_w = f.edge_u + f.edge_v;
    f.n_size = n_size, f.b_size = b_size, f.c_size = c_size;
    return f;
}

// Two boxes. Where contact() finds something, the line of the segment meets the plane of the triangle in one
// point, with t, u, v and u + v beyond [0, 1] by two tolerances at most. `side_factor` makes the box around
// the segment and that around the triangle larger by more than this, in parts of their sides, so that both
// hold the point.
BoxFilter::BoxFilter(const Filter& f, const Triangle& in_frame)
    : Filter(f), along_both{along_b.x + along_c.x, along_b.y + along_c.y, along_b.z + along_c.z, 0},
      slab_u(squared * side_factor + slab_margin * n_size * c_size),
      slab_w(slab_u + slab_margin * n_size * b_size) {
    const auto [a, b, c] = in_frame;
    const std::array<std::array<double, 3>, 3> axes{{{a.x, b.x, c.x}, {a.y, b.y, c.y}, {a.z, b.z, c.z}}};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto [least, most] = std::minmax({axes[axis][0], axes[axis][1], axes[axis][2]});
        sum[axis] = static_cast<float>(least + most);
        room[axis] = static_cast<float>(most - least) * side_factor + box_margin;
    }
}

// With d of largest coordinate 1 and a = s d, |d|1 <= 3, the errors of contact() above are 27 E s B C in the
// determinant, 60 E B C in the numerator of t and 180 E s C or 180 E s B in those of u and v. A determinant
// of s D with D > 1.4e-9 B C / s + 5e-9 (B + C + B C) keeps them to the same bounds. In single precision D
// has an error of less than 8 e N: that of n, v and w, two products and two sums.
float most_parallel(const Filter& filter, float shortest) {
    constexpr float of_t = 1.4e-9F, of_u_and_v = 5e-9F, of_rounding = 8 * e;
    const float area = filter.b_size * filter.c_size;
    return of_t * area / shortest + of_u_and_v * (filter.b_size + filter.c_size + area) +
           of_rounding * filter.n_size;
}

} // namespace loopwise::reduce
