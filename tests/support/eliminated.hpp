// The engines of the reductions by themselves, with everything chosen that a call of the library chooses.
#pragma once

#include "src/reduce/components.hpp"

/// In so many slots, whose memory is exactly as large as they say.
inline Chain eliminated(Chain chain, bool closed, loopwise::model::InstructionSet set, std::size_t slots) {
    loopwise::reduce::HeapSlots memory(slots);
    loopwise::reduce::Component component{chain.data(), chain.size(), closed};
    loopwise::reduce::eliminate(component, memory.get(), loopwise::reduce::kernels(set));
    chain.resize(component.count);
    return chain;
}

/// With the index of segments from the first removal to the last.
inline Chain eliminated_with_index(Chain chain, bool closed, loopwise::model::InstructionSet set) {
    loopwise::reduce::Component component{chain.data(), chain.size(), closed};
    loopwise::reduce::eliminate({&component, 1}, loopwise::reduce::kernels(set), 0);
    chain.resize(component.count);
    return chain;
}
