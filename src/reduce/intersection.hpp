// The predicate on which triangle elimination rests, inline for the search.
#pragma once

#include "src/model/comparisons.hpp"
#include "src/model/points.hpp"

namespace loopwise::reduce {

using model::equal, model::greater, model::greater_or_equal, model::operator-;

struct Triangle {
    PointR3 t0, t1, t2;
};

struct Segment {
    PointR3 s0, s1;
};

/// What intersection() returns.
enum class Contact { none = 0, inside = 1, boundary = 2 };

/// The rule of Sarrus; its sign and its zeros decide, so the order of evaluation is fixed.
inline double determinant(double a0, double a1, double a2, double b0, double b1, double b2, double c0,
                          double c1, double c2) {
    return (a1 * b2 * c0 + (a0 * b1 * c2 + a2 * b0 * c1)) - ((a0 * b2 * c1 + a2 * b1 * c0) + a1 * b0 * c2);
}

/// Every row of classify() holds t and u to their range but for a tolerance. The margin is wider than
/// that, so that leaving early never decides a case which rounding could turn.
inline bool far_outside(double x) {
    constexpr double margin = 10 * EPS;
    return !(x > -margin && x < 1 + margin);
}

/// Where the line of a segment meets the plane of a triangle: t runs from 0 at S0 to 1 at S1, u and v
/// along the edges T0T1 and T0T2.
inline Contact classify(double t, double u, double v) {
    const double sum = u + v;
    if (greater(t, 0) && greater(1, t) && greater(u, 0) && greater(1, u) && greater(v, 0) && greater(1, v) &&
        greater(1, sum))
        return Contact::inside;

    const auto within = [](double x) { return greater_or_equal(x, 0) && greater_or_equal(1, x); };
    const bool on_an_edge = (equal(u, 0) && within(v) && within(t)) ||
                            (equal(v, 0) && within(u) && within(t)) ||
                            (equal(sum, 1) && within(u) && within(v) && within(t));
    const bool an_end_lies_on_it = (equal(t, 0) || equal(t, 1)) && greater_or_equal(u, 0) &&
                                   greater_or_equal(v, 0) && greater_or_equal(1, sum);
    return on_an_edge || an_end_lies_on_it ? Contact::boundary : Contact::none;
}

inline double determinant(const Triangle& triangle, const Segment& segment) {
    const PointR3 a = segment.s0 - segment.s1;
    const PointR3 b = triangle.t1 - triangle.t0;
    const PointR3 c = triangle.t2 - triangle.t0;
    return determinant(a.x, b.x, c.x, a.y, b.y, c.y, a.z, b.z, c.z);
}

/// The contact where the determinant d is not zero.
[[gnu::noinline]] inline Contact contact_at_angle(const Triangle& triangle, const Segment& segment,
                                                  double d) {
    const PointR3 a = segment.s0 - segment.s1;
    const PointR3 b = triangle.t1 - triangle.t0;
    const PointR3 c = triangle.t2 - triangle.t0;

    // The inverse of the matrix with the columns a, b, c: every entry is divided before it is used.
    const PointR3 r = segment.s0 - triangle.t0;
    const double t = (b.y * c.z - c.y * b.z) / d * r.x + (c.x * b.z - b.x * c.z) / d * r.y +
                     (b.x * c.y - c.x * b.y) / d * r.z;
    if (far_outside(t)) return Contact::none;
    const double u = (c.y * a.z - a.y * c.z) / d * r.x + (a.x * c.z - c.x * a.z) / d * r.y +
                     (c.x * a.y - a.x * c.y) / d * r.z;
    if (far_outside(u)) return Contact::none;
    const double v = (a.y * b.z - b.y * a.z) / d * r.x + (b.x * a.z - a.x * b.z) / d * r.y +
                     (a.x * b.y - b.x * a.y) / d * r.z;
    return classify(t, u, v);
}

/// The contact of a segment with a triangle; see intersection() in the exported header.
inline Contact contact(const Triangle& triangle, const Segment& segment) {
    const double d = determinant(triangle, segment);
    return d == 0.0 ? Contact::inside : contact_at_angle(triangle, segment, d);
}

} // namespace loopwise::reduce
