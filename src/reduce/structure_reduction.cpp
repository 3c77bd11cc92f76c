#include "reduce/elimination.hpp"

#include <algorithm>

int ChainsReduce(std::vector<std::vector<ChainAtom>>& structure, bool closed) {
    // As soon as one component is marked as a loop, the marks say for all which are loops.
    const bool marked = std::any_of(structure.begin(), structure.end(), loopwise::has_repeated_end);
    std::vector<loopwise::Ring> rings;
    rings.reserve(structure.size());
    std::size_t slots = 0;
    for (Chain& chain : structure) {
        rings.push_back(
            loopwise::without_repeated_end(chain, marked ? loopwise::has_repeated_end(chain) : closed));
        slots += rings.back().count + 1;
    }
    loopwise::HeapWorkspace workspace(slots);

    loopwise::eliminate(rings, workspace.get());

    std::size_t total = 0;
    for (std::size_t i = 0; i < structure.size(); ++i)
        total += loopwise::finish(structure[i], rings[i], marked && rings[i].closed);
    return static_cast<int>(total);
}
