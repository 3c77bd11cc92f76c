#include "reduce/elimination.hpp"
#include "reduce/reduction.hpp"

#include <algorithm>

namespace loopwise {

std::size_t reduce(Structure& structure, bool closed) {
    // As soon as one component is marked as a loop, the marks say for all which are loops.
    const bool marked = std::any_of(structure.begin(), structure.end(), has_repeated_end);
    std::vector<Ring> rings;
    rings.reserve(structure.size());
    std::size_t slots = 0;
    for (Chain& chain : structure) {
        rings.push_back(without_repeated_end(chain, marked ? has_repeated_end(chain) : closed));
        slots += rings.back().count + 1;
    }
    HeapWorkspace workspace(slots);

    eliminate(rings, workspace.get());

    std::size_t total = 0;
    for (std::size_t i = 0; i < structure.size(); ++i)
        total += finish(structure[i], rings[i], marked && rings[i].closed);
    return total;
}

} // namespace loopwise

using namespace loopwise;

int ChainsReduce(std::vector<std::vector<ChainAtom>>& structure, bool closed) {
    return static_cast<int>(reduce(structure, closed));
}
