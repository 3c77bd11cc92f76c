// Closing by an arc from the direction of the last atom to that of the first.
#include "closure/closing.hpp"
#include "model/points.hpp"

using namespace loopwise;

namespace {

/// One or two atoms lie on one line with their centre, which rounding may hide.
constexpr std::size_t fewest_atoms = 3;

int close_outside(Chain& chain, double radius, int last_id) {
    if (chain.size() < fewest_atoms) return not_closed;
    return append_arc(chain, GivePointsOnTheCircle(position(chain.back()), position(chain.front()),
                                                   CentreOfChain(chain), radius, last_id));
}

} // namespace

int CloseChain_OUT(std::vector<ChainAtom>& chain, double scale) {
    FillFulerenData();
    if (refuse_empty(chain)) return closed;
    return close_outside(chain, RadiusOfChain(chain) * scale, largest_id(chain));
}

int CloseChains_OUT(std::vector<std::vector<ChainAtom>>& structure, double scale) {
    FillFulerenData();
    if (refuse_empty(structure)) return closed;
    const double radius = DiameterOfStructure(structure) * scale;
    for (Chain& component : structure)
        if (close_outside(component, radius, maxIdComps(structure)) == not_closed) return not_closed;
    return closed;
}
