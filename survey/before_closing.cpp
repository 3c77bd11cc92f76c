#include "survey/before_closing.hpp"

#include "closure/closures.hpp"
#include "model/points.hpp"
#include "reduce/reduction.hpp"

namespace loopwise {
namespace {

/// Chains of so few beads are reduced as fast by themselves.
constexpr std::size_t fewest_beads = 16;

bool are_one_place(const ChainAtom& a, const ChainAtom& b) {
    return CompareEq(length(position(a) - position(b)), 0);
}

} // namespace

/// The paths stand in the way as components of two beads, of which none can be taken. The part of a path that joins
/// the shifted ends needs not: it is farther out in its direction than the chain and all triangles between its beads.
void reduce_before_closing(Chain& chain, std::span<const int> rows, double diameter) {
    // A chain or a path whose ends are one place would pass for a loop.
    if (chain.size() < fewest_beads || are_one_place(chain.front(), chain.back())) return;
    Structure all(1);
    all.reserve(1 + 2 * rows.size());
    const Chain ends{chain.front(), chain.back()};
    for (const int row : rows) {
        Chain path = ends;
        if (close_in_direction(path, row, diameter) != Closing::closed || are_one_place(path[1], path[2]) ||
            are_one_place(path[0], path[3]))
            return;
        all.push_back({path[1], path[2]});
        all.push_back({path[0], path[3]});
    }
    constexpr std::size_t always_indexed = 0;
    all.front() = std::move(chain);
    reduce(all, false, always_indexed);
    chain = std::move(all.front());
}

} // namespace loopwise
