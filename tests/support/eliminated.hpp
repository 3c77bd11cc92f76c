// The engine of the reductions by itself, with everything chosen that a call of the library chooses.
#pragma once

#include "reduce/elimination.hpp"

inline Chain eliminated(Chain chain, bool closed, const loopwise::InstructionSet& set, std::size_t slots) {
    loopwise::Ring ring{chain.data(), chain.size(), closed};
    loopwise::HeapWorkspace workspace(slots);
    loopwise::eliminate({&ring, 1}, workspace.get(), set.find_doubts);
    chain.resize(ring.count);
    return chain;
}
