#include "survey/gap_paths.hpp"

#include "src/model/points.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace loopwise::survey {

using namespace model;
namespace {

PointR3 any_perpendicular(PointR3 unit) {
    const PointR3 axis = std::abs(unit.x) < 0.5 ? PointR3{1, 0, 0} : PointR3{0, 1, 0};
    const PointR3 across = cross(unit, axis);
    return (1 / length(across)) * across;
}

/// How many times as long as the gap a path is where no path of usual steps with so few beads spans it.
constexpr double slack = 2;
constexpr double rounding = 1e-9;

/// Half the angle between two steps of an arc of unit steps whose ends are this far apart: the distance is
/// sin(steps * angle) / sin(angle), which falls from `steps` to 0.
double half_turn(double steps, double distance) {
    double low = 0, high = std::numbers::pi / steps;
    constexpr int halvings = 60;
    for (int i = 0; i < halvings; ++i) {
        const double angle = (low + high) / 2;
        (std::sin(steps * angle) > distance * std::sin(angle) ? low : high) = angle;
    }
    return low;
}

/// Points of an arc, with both ends.
std::vector<PointR3> arc(PointR3 from, PointR3 to, std::size_t steps, double step) {
    const double apart = distance(from, to), turn = half_turn(static_cast<double>(steps), apart / step);
    const PointR3 along = (1 / apart) * (to - from), across = any_perpendicular(along);
    std::vector<PointR3> points{from};
    for (std::size_t i = 0; i + 1 < steps; ++i) {
        const double angle = (static_cast<double>(steps) - 1 - 2 * static_cast<double>(i)) * turn;
        points.push_back(points.back() + step * (std::cos(angle) * along + std::sin(angle) * across));
    }
    points.push_back(to);
    return points;
}

/// Turns the points between two others around the axis through these.
void fold(std::span<PointR3> points, double angle) {
    const PointR3 origin = points.front(), way = points.back() - origin;
    const double apart = length(way);
    constexpr double no_axis = 1e-6;
    if (apart < no_axis) return;
    const PointR3 axis = (1 / apart) * way;
    const double cosine = std::cos(angle), sine = std::sin(angle);
    for (PointR3& point : points.subspan(1, points.size() - 2)) {
        const PointR3 v = point - origin;
        point = origin + cosine * v + sine * cross(axis, v) + ((1 - cosine) * dot(axis, v)) * axis;
    }
}

} // namespace

std::size_t path_beads(const polymer::OddBond& gap, double usual_bond) {
    const double steps = std::ceil(gap.length / usual_bond);
    if (!(steps <= most_path_beads)) return most_path_beads;
    const auto needed = static_cast<std::size_t>(steps);
    const std::size_t beads = gap.missing + 1 >= needed && gap.missing > 0 ? gap.missing : 2 * needed - 1;
    return std::clamp<std::size_t>(beads, 1, most_path_beads);
}

void append_path(Chain& chain, const PointR3& from, const PointR3& to, std::size_t beads, double usual_bond,
                 ClosureRng rng) {
    const std::size_t steps = beads + 1;
    const double straight_step = distance(from, to) / static_cast<double>(steps);
    const double step = straight_step < usual_bond + rounding ? usual_bond : slack * straight_step;
    std::vector<PointR3> points = arc(from, to, steps, step);
    constexpr double draws = 0x1p31;
    constexpr std::size_t fewest_folds = 40, folds_of_a_step = 4;
    const auto below = [&](std::size_t end) { return static_cast<std::size_t>(rng()) % end; };
    for (std::size_t i = 0; i < fewest_folds + folds_of_a_step * steps; ++i) {
        const std::size_t first = below(steps - 1), last = first + 2 + below(steps - 1 - first);
        fold(std::span(points).subspan(first, last - first + 1), 2 * std::numbers::pi * rng() / draws);
    }
    for (std::size_t i = 1; i < steps; ++i) chain.push_back({points[i].x, points[i].y, points[i].z, 0});
}

} // namespace loopwise::survey
