// Closing through one far atom in a random direction from the centre.
#include "src/closure/closing.hpp"
#include "src/closure/point_tables.hpp"
#include "src/model/points.hpp"

namespace loopwise::closure {

using namespace model;
namespace {

/// The far atoms of a structure take directions from the first rows only, which are spread evenly by
/// themselves.
constexpr int rows_for_structures = 60;
static_assert(most_components_through_points == rows_for_structures);

/// Appends the atom at the distance from the chain's centre.
Closing append_far_atom(Chain& chain, int row, double distance_from_centre) {
    const std::optional<PointR3> offset =
        at_length(uniform_directions[static_cast<std::size_t>(row)], distance_from_centre);
    if (!offset) return Closing::no_direction;
    chain.push_back(atom_after(chain.back(), CentreOfChain(chain) + *offset));
    return Closing::closed;
}

} // namespace

Closing close_through_point(Chain& chain, double scale, const Draw& draw) {
    if (chain.empty()) return Closing::nothing_to_close;
    return append_far_atom(chain, draw_row(draw, uniform_rows), RadiusOfChain(chain) * scale);
}

Closing close_through_points(Structure& structure, double scale, const Draw& draw) {
    if (IsEmptyStructure(structure)) return Closing::nothing_to_close;
    if (structure.size() > most_components_through_points) return Closing::too_many_components;
    UnusedRows rows;
    const double far = DiameterOfStructure(structure) * scale;
    for (Chain& component : structure)
        if (append_far_atom(component, rows.draw(draw, rows_for_structures), far) != Closing::closed)
            return Closing::no_direction;
    return Closing::closed;
}

} // namespace loopwise::closure
