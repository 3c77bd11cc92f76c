#include "src/closure/closing.hpp"

#include "src/model/comparisons.hpp"
#include "src/model/identifiers.hpp"
#include "src/model/points.hpp"

#include <algorithm>

namespace loopwise::closure {

using namespace model;

int draw_row(const Draw& draw, int rows) { return draw() % rows; }

int UnusedRows::draw(const Draw& draw, int rows) {
    int row = draw_row(draw, rows);
    while (!used_.insert(row).second) row = draw_row(draw, rows);
    return row;
}

std::optional<PointR3> at_length(PointR3 direction, double wanted) {
    const double actual = length(direction);
    if (equal(actual, 0.0)) return std::nullopt;
    return PointR3{direction.x * wanted / actual, direction.y * wanted / actual, direction.z * wanted / actual};
}

ChainAtom atom_after(const ChainAtom& last, PointR3 point, std::uint32_t steps) {
    return {point.x, point.y, point.z, model::id_after(last.id, steps)};
}

std::int32_t largest_id(const Chain& chain) {
    return std::max_element(chain.begin(), chain.end(),
                            [](const ChainAtom& a, const ChainAtom& b) { return a.id < b.id; })
        ->id;
}

Closing append_arc(Chain& chain, const Chain& arc) {
    if (arc.empty()) return Closing::no_arc;
    chain.insert(chain.end(), arc.begin(), arc.end());
    return Closing::closed;
}

} // namespace loopwise::closure
