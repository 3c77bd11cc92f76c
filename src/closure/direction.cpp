// Closing by moving both ends out in one direction.
#include "src/closure/closing.hpp"
#include "src/closure/point_tables.hpp"
#include "src/model/diameter.hpp"
#include "src/model/points.hpp"

#include <span>

namespace loopwise::closure {

using namespace model;
namespace {

/// How far beyond the diameter the shifted ends lie, so that the path between them is outside.
constexpr double diameters = 1.02;

/// Appends the last and the first atom, both shifted by the distance.
Closing append_shifted_ends(Chain& chain, PointR3 direction, double distance) {
    const std::optional<PointR3> shift = at_length(direction, distance);
    if (!shift) return Closing::no_direction;
    const ChainAtom first = chain.front(), last = chain.back();
    chain.reserve(chain.size() + 2);
    chain.push_back(atom_after(last, position(last) + *shift));
    chain.push_back(atom_after(last, position(first) + *shift, 2));
    return Closing::closed;
}

} // namespace

Closing close_in_direction(Chain& chain, int row, double diameter) {
    if (chain.empty()) return Closing::nothing_to_close;
    if (row < 0 || row >= uniform_rows) return Closing::no_such_row;
    return append_shifted_ends(chain, uniform_directions[static_cast<std::size_t>(row)], diameters * diameter);
}

Closing close_in_direction(Chain& chain, int row) { return close_in_direction(chain, row, DiameterOfChain(chain)); }

Closing close_in_random_direction(Chain& chain, const Draw& draw) {
    if (chain.empty()) return Closing::nothing_to_close;
    return close_in_direction(chain, draw_row(draw, uniform_rows));
}

Closing close_in_random_directions(Structure& structure, const Draw& draw) {
    if (IsEmptyStructure(structure)) return Closing::nothing_to_close;
    if (structure.size() > most_components_in_directions) return Closing::too_many_components;
    UnusedRows rows;
    model::Diameter diameter(structure);
    for (Chain& component : structure) {
        const auto row = static_cast<std::size_t>(rows.draw(draw, uniform_rows));
        // The atoms that earlier components got count.
        if (append_shifted_ends(component, uniform_directions[row], diameters * diameter.value()) != Closing::closed)
            return Closing::no_direction;
        for (const ChainAtom& atom : std::span(component).last(2)) diameter.include(position(atom), structure);
    }
    return Closing::closed;
}

} // namespace loopwise::closure
