#include "src/projection/projection.hpp"

#include "src/closure/point_tables.hpp"
#include "src/model/points.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace loopwise::projection {

using namespace model;
using closure::fullerene_directions;
namespace {

/// The whole part, held to the 32-bit range; 0 for a not-a-number.
std::int64_t whole_part(double coordinate) {
    constexpr double least = std::numeric_limits<std::int32_t>::min();
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(coordinate)) return 0;
    return static_cast<std::int64_t>(std::clamp(coordinate, least, most));
}

} // namespace

std::vector<Edge> project(const Chain& chain, int direction_index, bool closed) {
    std::vector<Edge> edges;
    if (chain.size() < 2) return edges;
    const auto row = static_cast<std::size_t>(std::abs(std::int64_t{direction_index}) % closure::fullerene_rows);
    const PointR3 direction = fullerene_directions[row];

    edges.reserve(chain.size());
    PointR3 previous = ProjectPointF(position(chain.front()), direction);
    for (std::size_t j = 1; j < chain.size(); ++j) {
        const PointR3 current = ProjectPointF(position(chain[j]), direction);
        edges.push_back({previous, current, {}, 0});
        previous = current;
    }
    if (closed) edges.push_back({previous, PointR3(edges.front().start), {}, 0});
    return edges;
}

} // namespace loopwise::projection

using namespace loopwise::projection;

PointR3 ProjectPointF(PointR3 point, PointR3 direction) {
    const std::int64_t whole_a = whole_part(direction.x);
    const std::int64_t whole_b = whole_part(direction.y);
    const std::int64_t whole_c = whole_part(direction.z);
    if (whole_a == 0 && whole_b == 0) return point;

    // Unsigned: three squares of 2^31 fit into 64 bits, but not into 63. Their product may not.
    const auto square = [](std::int64_t n) { return static_cast<std::uint64_t>(n * n); };
    const std::uint64_t planar = square(whole_a) + square(whole_b);
    const auto s = static_cast<double>(planar);
    const auto t = static_cast<double>(planar + square(whole_c));
    const double u = s * t;
    const auto a = static_cast<double>(whole_a);
    const auto b = static_cast<double>(whole_b);
    const auto c = static_cast<double>(whole_c);
    const auto [x, y, z] = point;
    return {(y * a + -x * b) / std::sqrt(s), (s * z + (-x * a * c - c * (b * y))) / std::sqrt(u),
            (z * c + (x * a + b * y)) / std::sqrt(t)};
}

std::vector<Edge> ProjectChain(const std::vector<ChainAtom>& chain, int directionIndex, bool closed) {
    FillFulerenData();
    return project(chain, directionIndex, closed);
}
