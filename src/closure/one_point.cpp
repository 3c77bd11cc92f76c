// Closing through one far atom in a random direction from the centre.
#include "closure/closing.hpp"
#include "closure/point_tables.hpp"
#include "model/points.hpp"

#include <cstdlib>
#include <iostream>

using namespace loopwise;

namespace {

/// The far atoms of a structure take directions from the first rows only, which are spread evenly by
/// themselves.
constexpr int rows_for_structures = 60;

/// Appends the atom at the distance from the chain's centre; false when the direction has no length.
bool append_far_atom(Chain& chain, PointR3 direction, double distance_from_centre) {
    const std::optional<PointR3> offset = at_length(direction, distance_from_centre);
    if (!offset) return false;
    chain.push_back(atom_after(chain.back(), CentreOfChain(chain) + *offset));
    return true;
}

} // namespace

int CloseChain_1point(std::vector<ChainAtom>& chain, double scale) {
    FillFulerenData();
    if (refuse_empty(chain)) return closed;
    const double far = RadiusOfChain(chain) * scale;
    const auto row = static_cast<std::size_t>(std::rand() % uniform_rows);
    if (append_far_atom(chain, uniform[row], far)) return closed;
    std::cerr << "CloseChain_1point(). Chain is closed with direct line.\n";
    return not_closed;
}

int CloseChains_1point(std::vector<std::vector<ChainAtom>>& structure, double scale) {
    FillFulerenData();
    if (refuse_empty(structure)) return closed;
    if (structure.size() > rows_for_structures) return not_closed;
    UnusedRows rows;
    const double far = DiameterOfStructure(structure) * scale;
    for (Chain& component : structure) {
        const auto row = static_cast<std::size_t>(rows.draw(rows_for_structures));
        if (append_far_atom(component, uniform[row], far)) continue;
        std::cerr << "Problem in CloseChains_1point(). Chain is closed with direct line. (Possibly "
                     "FillFulerenData(); hasn't been called before.\n";
        return not_closed;
    }
    return closed;
}
