// Closing by moving both ends out in one direction.
#include "closure/closing.hpp"
#include "closure/point_tables.hpp"
#include "model/diameter.hpp"
#include "model/points.hpp"

#include <cstdlib>
#include <iostream>
#include <span>

using namespace loopwise;

namespace {

/// How far beyond the diameter the shifted ends lie, so that the path between them is outside.
constexpr double diameters = 1.02;

/// Appends the last and the first atom, both shifted by the distance; false when the direction has no
/// length.
bool append_shifted_ends(Chain& chain, PointR3 direction, double distance) {
    const std::optional<PointR3> shift = at_length(direction, distance);
    if (!shift) return false;
    const ChainAtom first = chain.front(), last = chain.back();
    chain.reserve(chain.size() + 2);
    chain.push_back(atom_after(last, position(last) + *shift));
    chain.push_back(atom_after(last, position(first) + *shift, 2));
    return true;
}

int close_in_direction(Chain& chain, int row, const char* message) {
    if (append_shifted_ends(chain, uniform[static_cast<std::size_t>(row)],
                            diameters * DiameterOfChain(chain)))
        return closed;
    std::cerr << message;
    return not_closed;
}

} // namespace

int CloseChain_1direction_NoRandom(std::vector<ChainAtom>& chain, int directionIndex) {
    FillFulerenData();
    if (refuse_empty(chain)) return closed;
    if (directionIndex < 0 || directionIndex >= uniform_rows) return not_closed;
    return close_in_direction(chain, directionIndex,
                              "Problem in CloseChain_NoRandom(). Chain is closed with direct line.\n");
}

int CloseChain_1direction(std::vector<ChainAtom>& chain) {
    FillFulerenData();
    if (refuse_empty(chain)) return closed;
    return close_in_direction(chain, std::rand() % uniform_rows,
                              "Problem in CloseChain_1direction(). Chain is closed with direct line.\n");
}

int CloseChains_1direction(std::vector<std::vector<ChainAtom>>& structure) {
    FillFulerenData();
    if (refuse_empty(structure)) return closed;
    if (structure.size() > uniform_rows) return not_closed;
    UnusedRows rows;
    Diameter diameter(structure);
    for (Chain& component : structure) {
        const auto row = static_cast<std::size_t>(rows.draw(uniform_rows));
        // The atoms that earlier components got count.
        if (!append_shifted_ends(component, uniform[row], diameters * diameter.value())) {
            std::cerr << "Problem in CloseChains_1direction(). Chain is closed with direct line.\n";
            return not_closed;
        }
        for (const ChainAtom& atom : std::span(component).last(2))
            diameter.include(position(atom), structure);
    }
    return closed;
}
