// Closing by an arc between two random directions.
#include "src/closure/circle_arc.hpp"
#include "src/closure/closing.hpp"
#include "src/closure/point_tables.hpp"
#include "src/model/points.hpp"

namespace loopwise::closure {

using namespace model;
namespace {

constexpr int rows_for_redraws = 60;
constexpr int rows_per_component = 2;
static_assert(most_components_by_arcs == uniform_rows / rows_per_component);

Closing append_arc_between(Chain& chain, int from, int to, double radius, std::int32_t last_id) {
    const PointR3 centre = CentreOfChain(chain);
    const auto towards = [&](int row) { return centre + uniform_directions[static_cast<std::size_t>(row)]; };
    return append_arc(chain, circle_arc(towards(from), towards(to), centre, radius, last_id).atoms);
}

} // namespace

Closing close_by_arc(Chain& chain, double scale, const Draw& draw) {
    if (chain.empty()) return Closing::nothing_to_close;
    const int from = draw_row(draw, uniform_rows);
    int to = draw_row(draw, uniform_rows);
    while (to == from) to = draw_row(draw, rows_for_redraws);
    return append_arc_between(chain, from, to, RadiusOfChain(chain) * scale, largest_id(chain));
}

Closing close_by_arcs(Structure& structure, double scale, const Draw& draw) {
    if (IsEmptyStructure(structure)) return Closing::nothing_to_close;
    if (structure.size() > most_components_by_arcs) return Closing::too_many_components;
    UnusedRows rows;
    const double radius = DiameterOfStructure(structure) * scale;
    for (Chain& component : structure) {
        const int from = rows.draw(draw, uniform_rows);
        const int to = rows.draw(draw, uniform_rows);
        if (append_arc_between(component, from, to, radius, maxIdComps(structure)) != Closing::closed)
            return Closing::no_arc;
    }
    return Closing::closed;
}

} // namespace loopwise::closure
