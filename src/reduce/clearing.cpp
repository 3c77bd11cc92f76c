#include "reduce/clearing.hpp"

#include "model/points.hpp"

#include <algorithm>
#include <array>
#include <cmath>

namespace loopwise {
namespace {

/// Outside these bounds products of coordinates could leave the range of a float or underflow in
/// contact(); nothing is cleared there.
constexpr double least_reach = 1e-9;
constexpr double most_reach = 1e9;
constexpr double least_normal = 1e-30;

double dot(PointR3 a, PointR3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double sum_of_sizes(PointR3 v) { return std::fabs(v.x) + std::fabs(v.y) + std::fabs(v.z); }
PointR3 scaled(PointR3 v, double factor) { return {v.x * factor, v.y * factor, v.z * factor}; }

/// The function that is 0 at the origin and grows along the gradient.
Affine affine(PointR3 gradient, PointR3 origin) {
    return {static_cast<float>(gradient.x), static_cast<float>(gradient.y), static_cast<float>(gradient.z),
            static_cast<float>(-dot(gradient, origin))};
}

struct Rounded {
    static float multiply_add(float a, float b, float c) { return a * b + c; }
};

struct Fused {
    static float multiply_add(float a, float b, float c) { return std::fma(a, b, c); }
};

/// A bead as the triangle sees it.
struct Seen {
    float h, p, q;
};

template <class Arithmetic> float value(const Affine& f, float x, float y, float z) {
    constexpr auto multiply_add = Arithmetic::multiply_add;
    return multiply_add(x, f.x, multiply_add(y, f.y, multiply_add(z, f.z, f.constant)));
}

template <class Arithmetic> bool in_doubt(const Clearance& c, Seen s0, Seen s1) {
    constexpr auto multiply_add = Arithmetic::multiply_add;
    const float rise = s1.h - s0.h;
    const float drop = std::fabs(rise);
    if (!(drop > c.parallel)) return true;
    if (std::fabs(s0.h + s1.h) > multiply_add(drop, side_factor, c.side)) return false;

    const float sign = std::signbit(rise) ? -1.0F : 1.0F;
    const float u = multiply_add(s0.p, s1.h, -(s1.p * s0.h)) * sign;
    const float v = multiply_add(s0.q, s1.h, -(s1.q * s0.h)) * sign;
    const float slack = beyond * drop;
    return !(-(slack + c.edge_u) > u || -(slack + c.edge_v) > v || u + v > drop + (slack + c.edge_w));
}

template <class Arithmetic>
std::size_t find_doubts(const Clearance& clearance, const Cloud& cloud, std::size_t block, std::size_t end,
                        std::uint64_t& doubts) {
    const auto seen = [&](std::size_t j) {
        const float x = cloud.x[j], y = cloud.y[j], z = cloud.z[j];
        return Seen{value<Arithmetic>(clearance.height, x, y, z),
                    value<Arithmetic>(clearance.along_b, x, y, z),
                    value<Arithmetic>(clearance.along_c, x, y, z)};
    };
    for (; block < end; ++block) {
        std::uint64_t found = 0;
        for (std::uint64_t left = cloud.segments[block]; left != 0; left &= left - 1) {
            const auto bit = static_cast<std::size_t>(std::countr_zero(left));
            const std::size_t j = block * block_size + bit;
            if (in_doubt<Arithmetic>(clearance, seen(j), seen(j + 1))) found |= std::uint64_t{1} << bit;
        }
        if (found != 0) {
            doubts = found;
            return block;
        }
    }
    return end;
}

} // namespace

// Rounding. Let R be the reach, e = 2^-24 and E = 2^-53 the half units in the last place of a float and
// a double, and |.|1 the sum of sizes. A height takes three products and three sums of terms below
// 3.5 R, from coordinates, a gradient and a constant that are each rounded to float: less than 28 e R in
// all; sums and differences of two heights add less than 7 e R. The direction of n is off by
// 4 E |b|1|c|1/|n|, which the second term covers many times over:
//     height_error = R (2^-18 + 1e-8 |b|1|c|1/|n|).
// p and q have the same error times the length of their gradient, |c|/|n| and |b|/|n|, so the numerators
// p0 h1 - p1 h0, with heights below 3.5 R, have less than 20 R |gradient| height_error.
//
// contact() itself, in double, errs by less than 9 E |a|1|b|1|c|1 in the determinant and
// 10 E |b|1|c|1|r|1 (and alike) in the numerators of t, u and v, where |a|1 and |r|1 are below 6 R.
// A drop of more than `parallel` keeps the relative error of the determinant below 1e-6, and that of t,
// u and v below half a tolerance.
Clearance clearance_of(const Triangle& triangle, const Surroundings& surroundings) {
    const PointR3 origin = triangle.t0 - surroundings.centre;
    const PointR3 b = triangle.t1 - triangle.t0;
    const PointR3 c = triangle.t2 - triangle.t0;
    const PointR3 n = cross(b, c);
    const double reach = surroundings.reach;
    const double size = length(n);
    const bool in_range = reach > least_reach && reach < most_reach && size > least_normal;
    const double inverse = 1 / size;
    const PointR3 normal = scaled(n, inverse);

    const double b_size = sum_of_sizes(b) * inverse;
    const double c_size = sum_of_sizes(c) * inverse;
    const double height_error = in_range ? reach * (0x1p-18 + 1e-8 * b_size * c_size * size) : INFINITY;
    const double parallel = 4 * height_error + 1e-8 * reach * reach * (b_size + c_size);
    const double edge_u = 20 * reach * c_size * height_error;
    const double edge_v = 20 * reach * b_size * height_error;
    return {affine(normal, origin),
            affine(scaled(cross(c, normal), inverse), origin),
            affine(scaled(cross(normal, b), inverse), origin),
            static_cast<float>(4 * height_error),
            static_cast<float>(parallel),
            static_cast<float>(edge_u),
            static_cast<float>(edge_v),
            static_cast<float>(edge_u + edge_v + 4 * height_error)};
}

std::size_t find_doubts_plain(const Clearance& clearance, const Cloud& cloud, std::size_t block,
                              std::size_t end, std::uint64_t& doubts) {
    return find_doubts<Rounded>(clearance, cloud, block, end, doubts);
}

std::size_t find_doubts_fused(const Clearance& clearance, const Cloud& cloud, std::size_t block,
                              std::size_t end, std::uint64_t& doubts) {
    return find_doubts<Fused>(clearance, cloud, block, end, doubts);
}

} // namespace loopwise
