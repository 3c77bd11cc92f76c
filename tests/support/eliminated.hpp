// The engine of the reductions by itself, with everything chosen that a call of the library chooses.
#pragma once

#include "src/reduce/reduction.hpp"

#include <vector>

/// In so many slots, whose memory is exactly as large as they say; with the index of segments from the first
/// removal to the last, or without.
inline Chain eliminated(Chain chain, bool closed, loopwise::model::InstructionSet set, std::size_t slots,
                        bool indexed = false) {
    const std::size_t row = slots + loopwise::reduce::position_padding;
    std::vector<float> positions(3 * row);
    std::vector<std::uint32_t> ids(2 * slots);
    const loopwise::reduce::Slots<std::uint32_t> memory{
        slots,      positions.data(),  positions.data() + row, positions.data() + 2 * row,
        ids.data(), ids.data() + slots};
    const loopwise::reduce::Component component{chain.data(), chain.size(), closed};
    loopwise::reduce::SegmentIndex index(loopwise::reduce::kernels(set), chain.size(), chain.size());
    const loopwise::reduce::Indexing indexing{indexed ? &index : nullptr, 0};
    chain.resize(loopwise::reduce::eliminate(component, memory, loopwise::reduce::kernels(set), indexing));
    return chain;
}
