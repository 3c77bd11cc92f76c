// Components to reduce, and the memory that their reduction takes.
#pragma once

#include "src/reduce/overflow_elimination.hpp"

#include <span>

namespace loopwise::reduce {

struct Component {
    ChainAtom* atoms;
    std::size_t count; ///< number of beads; those that are left stand at the front of the atoms
    bool closed;
};

/// Reduces components together, in memory from the heap, all of which is taken before the first change. Segments have
/// an index while at least so many beads are left.
void eliminate(std::span<Component> components, const Kernels& kernels, std::size_t fewest_indexed);

/// Reduces one component in given slots. It needs one more than it has beads; with fewer it takes longer.
template <class Id> void eliminate(Component& component, const Slots<Id>& slots, const Kernels& kernels);

/// The calls around them take the rest of 64 KiB.
using ShortChainSlots = StackSlots<std::uint16_t, 3456>;
using LongChainSlots = StackSlots<std::uint32_t, 2560>;
static_assert(sizeof(ShortChainSlots) < 58 * 1024 &&
              sizeof(LongChainSlots) + sizeof(OverflowPart) < 58 * 1024);

} // namespace loopwise::reduce
