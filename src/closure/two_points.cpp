// Closing by an arc between two random directions.
#include "closure/closing.hpp"
#include "closure/point_tables.hpp"
#include "model/points.hpp"

#include <cstdlib>

using namespace loopwise;

namespace {

constexpr int rows_for_redraws = 60;
constexpr int rows_per_component = 2;

PointR3 towards(PointR3 centre, int row) { return centre + uniform[static_cast<std::size_t>(row)]; }

} // namespace

int CloseChain_2points(std::vector<ChainAtom>& chain, double scale) {
    FillFulerenData();
    if (refuse_empty(chain)) return closed;
    const int from = std::rand() % uniform_rows;
    int to = std::rand() % uniform_rows;
    while (to == from) to = std::rand() % rows_for_redraws;
    const PointR3 centre = CentreOfChain(chain);
    return append_arc(chain, GivePointsOnTheCircle(towards(centre, from), towards(centre, to), centre,
                                                   RadiusOfChain(chain) * scale, largest_id(chain)));
}

int CloseChains_2points(std::vector<std::vector<ChainAtom>>& structure, double scale) {
    FillFulerenData();
    if (refuse_empty(structure)) return closed;
    if (structure.size() > uniform_rows / rows_per_component) return not_closed;
    UnusedRows rows;
    const double radius = DiameterOfStructure(structure) * scale;
    for (Chain& component : structure) {
        const int from = rows.draw(uniform_rows);
        const int to = rows.draw(uniform_rows);
        const PointR3 centre = CentreOfChain(component);
        const Chain arc = GivePointsOnTheCircle(towards(centre, from), towards(centre, to), centre, radius,
                                                maxIdComps(structure));
        if (append_arc(component, arc) == not_closed) return not_closed;
    }
    return closed;
}
