// Closing by an arc from the direction of the last atom to that of the first.
#include "src/closure/circle_arc.hpp"
#include "src/closure/closing.hpp"
#include "src/model/points.hpp"

namespace loopwise::closure {

using namespace model;
namespace {

/// One or two atoms lie on one line with their centre, which rounding may hide.
constexpr std::size_t fewest_atoms = 3;

Closing close_with_radius(Chain& chain, double radius, std::int32_t last_id) {
    if (chain.size() < fewest_atoms) return Closing::no_arc;
    return append_arc(
        chain,
        circle_arc(position(chain.back()), position(chain.front()), CentreOfChain(chain), radius, last_id).atoms);
}

} // namespace

Closing close_outside(Chain& chain, double scale) {
    if (chain.empty()) return Closing::nothing_to_close;
    return close_with_radius(chain, RadiusOfChain(chain) * scale, largest_id(chain));
}

Closing close_outside(Structure& structure, double scale) {
    if (IsEmptyStructure(structure)) return Closing::nothing_to_close;
    const double radius = DiameterOfStructure(structure) * scale;
    for (Chain& component : structure)
        if (close_with_radius(component, radius, maxIdComps(structure)) != Closing::closed) return Closing::no_arc;
    return Closing::closed;
}

} // namespace loopwise::closure
