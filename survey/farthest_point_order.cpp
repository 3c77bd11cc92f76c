#include "survey/farthest_point_order.hpp"

#include "src/closure/point_tables.hpp"
#include "src/model/points.hpp"

#include <algorithm>
#include <array>

namespace loopwise::survey {
namespace {

std::array<int, closure::uniform_rows> make_farthest_point_order() {
    constexpr double no_cosine = -2.0, taken_already = 3.0; // below and above all cosines
    std::array<int, closure::uniform_rows> rows{};
    std::array<double, closure::uniform_rows> nearest; // the largest cosine to a row taken
    nearest.fill(no_cosine);
    std::size_t next = 0;
    for (int& row : rows) {
        row = static_cast<int>(next);
        const PointR3 taken = closure::uniform_directions[next];
        nearest[next] = taken_already;
        for (std::size_t i = 0; i < closure::uniform_directions.size(); ++i) {
            const PointR3& p = closure::uniform_directions[i];
            const double cosine =
                (p.x * taken.x + p.y * taken.y + p.z * taken.z) / (model::length(p) * model::length(taken));
            nearest[i] = std::max(nearest[i], cosine);
        }
        next = static_cast<std::size_t>(std::min_element(nearest.begin(), nearest.end()) - nearest.begin());
    }
    return rows;
}

} // namespace

std::span<const int> farthest_point_order() {
    static const std::array<int, closure::uniform_rows> rows = make_farthest_point_order();
    return rows;
}

} // namespace loopwise::survey
