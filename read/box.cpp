#include "read/box.hpp"

#include "polymer/bonds.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace loopwise::read {
namespace {

constexpr double shortest_edge = 10.0; // less is a placeholder

PointR3 between(const ChainAtom& a, const ChainAtom& b) { return {b.x - a.x, b.y - a.y, b.z - a.z}; }

/// The distance to the nearest copy in a neighbouring box.
double least_image(const PointR3& step, const Box& box) {
    double least = INFINITY;
    for (int i = -1; i <= 1; ++i)
        for (int j = -1; j <= 1; ++j)
            for (int k = -1; k <= 1; ++k) {
                const auto at = [&](double PointR3::*axis) {
                    return step.*axis + i * box[0].*axis + j * box[1].*axis + k * box[2].*axis;
                };
                if (i != 0 || j != 0 || k != 0)
                    least = std::min(least, std::hypot(at(&PointR3::x), at(&PointR3::y), at(&PointR3::z)));
            }
    return least;
}

} // namespace

std::optional<Box> box_with(const std::array<double, 6>& cell) {
    const auto [a, b, c, alpha, beta, gamma] = cell;
    constexpr double degree = std::numbers::pi / 180.0;
    if (!(std::min({a, b, c}) >= shortest_edge) || !(std::min({alpha, beta, gamma}) > 0.0) ||
        !(std::max({alpha, beta, gamma}) < 180.0))
        return std::nullopt;
    const double x = std::cos(beta * degree);
    const double y = (std::cos(alpha * degree) - x * std::cos(gamma * degree)) / std::sin(gamma * degree);
    const double z = 1.0 - x * x - y * y;
    if (!(z > 0.0)) return std::nullopt;
    return Box{{{a, 0.0, 0.0},
                {b * std::cos(gamma * degree), b * std::sin(gamma * degree), 0.0},
                {c * x, c * y, c * std::sqrt(z)}}};
}

bool is_wrapped(const polymer::NamedChain& chain, const Box& box) {
    constexpr double tolerance = 2.0; // the box may be that of another frame
    const polymer::Bonds bonds = polymer::bonds_of(chain);
    return !bonds.gaps.empty() && std::all_of(bonds.gaps.begin(), bonds.gaps.end(), [&](const polymer::OddBond& gap) {
        const PointR3 step = between(chain.beads[gap.bead], chain.beads[gap.bead + 1]);
        return gap.missing == 0 && least_image(step, box) <= tolerance * polymer::longest_trace_bond;
    });
}

} // namespace loopwise::read
