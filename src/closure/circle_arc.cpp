// Atoms along an arc of a circle. The order of every sum and product below decides where an atom lies
// to the last bit, and whether the end direction is met once or twice.
#include "src/closure/circle_arc.hpp"

#include "src/model/identifiers.hpp"
#include "src/model/points.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace loopwise::closure {

using namespace model;
namespace {

constexpr double arc_step = 0.175;         // radians
constexpr double shortest_last_gap = 0.05; // radians
constexpr std::size_t most_arc_atoms = 20;
constexpr double pi = std::numbers::pi;

/// An orthonormal basis of the plane of the arc, with e1 in the x-y plane.
struct Basis {
    PointR3 e1, e2;
};

Basis basis_of_plane(PointR3 a, PointR3 b) {
    const PointR3 normal = cross(a, b);
    const double size = length(normal);
    const PointR3 n{normal.x / size, normal.y / size, normal.z / size};
    if (n.x == 0.0 && n.y == 0.0) return {{1, 0, 0}, {0, 1, 0}};
    const double s = std::sqrt(n.x * n.x + n.y * n.y);
    const PointR3 e1{-n.y / s, n.x / s, 0};
    return {e1, {-n.z * e1.y, n.z * e1.x, n.x * e1.y - n.y * e1.x}};
}

struct SineCosine {
    double sine, cosine;
};

/// Sine and cosine of v = alpha e1 + beta e2 by Cramer's rule on the first pair of coordinates whose
/// determinant is not zero; nothing when there is none. The same pair serves every v.
std::optional<SineCosine> sine_and_cosine(PointR3 v, const Basis& basis) {
    const auto& [e1, e2] = basis;
    const auto solve = [size = length(v)](double vp, double vq, double e1p, double e1q, double e2p,
                                          double e2q, double d) {
        const double alpha = (vp * e2q - e2p * vq) / d;
        const double beta = (e1p * vq - vp * e1q) / d;
        return SineCosine{beta / size, alpha / size};
    };
    const double xy = e1.x * e2.y - e2.x * e1.y;
    const double xz = e1.x * e2.z;
    const double yz = e1.y * e2.z;
    if (xy != 0.0) return solve(v.x, v.y, e1.x, e1.y, e2.x, e2.y, xy);
    if (xz != 0.0) return solve(v.x, v.z, e1.x, e1.z, e2.x, e2.z, xz);
    if (yz != 0.0) return solve(v.y, v.z, e1.y, e1.z, e2.y, e2.z, yz);
    return std::nullopt;
}

/// In [0, 2 pi), from the sine; the cosine only selects the quadrant. Rounding may have carried the
/// sine just past 1, where there is no arc sine.
double angle(SineCosine direction) {
    const auto [sine, cosine] = direction;
    const double from_sine = std::asin(std::clamp(sine, -1.0, 1.0));
    if (sine >= 0 && cosine >= 0) return from_sine;
    if (sine < 0 && cosine > 0) return from_sine + 2 * pi;
    return pi - from_sine;
}

/// The shorter arc from one direction to another.
struct Walk {
    double step, length;
};

Walk shorter_walk(double difference) {
    if (difference > pi) return {-arc_step, 2 * pi - difference};
    if (difference < -pi) return {arc_step, difference + 2 * pi};
    return {difference < 0 ? -arc_step : arc_step, std::fabs(difference)};
}

PointR3 point_on_circle(PointR3 centre, double radius, const Basis& basis, double at) {
    double sine = 0, cosine = 0;
    ::sincos(at, &sine, &cosine);
    const double along1 = radius * cosine;
    const double along2 = radius * sine;
    const auto& [e1, e2] = basis;
    return {centre.x + along1 * e1.x + along2 * e2.x, centre.y + along1 * e1.y + along2 * e2.y,
            centre.z + along1 * e1.z + along2 * e2.z};
}

} // namespace

Arc circle_arc(PointR3 start_point, PointR3 end_point, PointR3 centre, double radius, std::int32_t last_id) {
    const PointR3 a = start_point - centre;
    const PointR3 b = end_point - centre;
    const Basis basis = basis_of_plane(a, b);
    std::optional<SineCosine> start = sine_and_cosine(a, basis);
    std::optional<SineCosine> end = sine_and_cosine(b, basis);
    Arc result;
    result.has_no_basis = !start;
    if (!start) start = end = SineCosine{0, 0};
    if (std::isnan(start->sine) || std::isnan(start->cosine)) return result;

    const double start_angle = angle(*start);
    const double end_angle = angle(*end);
    const auto [step, arc] = shorter_walk(end_angle - start_angle);
    const double limit = arc_step + arc - shortest_last_gap;
    const double threshold = arc - shortest_last_gap;
    if (!(limit > 0)) return result;

    result.atoms.reserve(most_arc_atoms);
    std::int32_t id = last_id;
    for (double t = 0; result.atoms.empty() || std::fabs(t) < limit; t += step) {
        id = model::id_after(id);
        const PointR3 p =
            point_on_circle(centre, radius, basis, std::fabs(t) < threshold ? start_angle + t : end_angle);
        result.atoms.push_back({p.x, p.y, p.z, id});
    }
    return result;
}

} // namespace loopwise::closure
