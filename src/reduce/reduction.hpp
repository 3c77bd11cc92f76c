// The reductions without a word on the standard output: what the exported functions and the product call.
#pragma once

#include "src/reduce/elimination.hpp"

namespace loopwise::reduce {

/// ChainReduce() and ChainsReduce() without the debug line. Safe to call from several threads on separate
/// values. They take what memory they need from the heap, nothing for a chain of up to 3,455
/// beads, and all of it before the first change.
std::size_t reduce(Chain& chain, bool closed);
std::size_t reduce(Structure& structure, bool closed);

/// The second with an index of segments while at least so many beads are left.
std::size_t reduce(Structure& structure, bool closed, std::size_t fewest_indexed);

/// The first without any memory from the heap, whatever the length.
std::size_t reduce_on_stack(Chain& chain, bool closed);

/// Slots on the stack, not initialised: a short chain uses little of them. One slot repeats a position.
template <class Id, std::size_t most> struct StackSlots {
    static constexpr std::size_t count = most;
    alignas(64) float x[most + position_padding];
    float y[most + position_padding], z[most + position_padding];
    Id bead[most], blocker[most];
    Slots<Id> get() { return {most, x, y, z, bead, blocker}; }
};

/// The calls around them take the rest of 64 KiB.
using ShortChainSlots = StackSlots<std::uint16_t, 3456>;
using LongChainSlots = StackSlots<std::uint32_t, 2560>;
static_assert(sizeof(ShortChainSlots) < 58 * 1024 && sizeof(LongChainSlots) + sizeof(RearPart) < 58 * 1024);

/// Reduces one component: how many beads are left. With fewer slots than its beads and one more it takes longer.
template <class Id>
std::size_t eliminate(const Component& component, const Slots<Id>& slots, const Kernels& kernels,
                      const Indexing& indexing = {});

} // namespace loopwise::reduce
