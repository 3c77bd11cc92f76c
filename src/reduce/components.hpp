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

/// Reduces components together. Allocates all memory before the first change. Uses an index of segments while
/// at least `fewest_indexed` beads are left.
void eliminate(std::span<Component> components, const Kernels& kernels, std::size_t fewest_indexed);

/// Reduces one component in given slots. Takes longer with fewer slots than one more than its beads.
template <class Id> void eliminate(Component& component, const Slots<Id>& slots, const Kernels& kernels);

/// Sizes for a stack of 64 KiB, of which the calls around them need a part.
using ShortChainSlots = StackSlots<std::uint16_t, 3456>;
using LongChainSlots = StackSlots<std::uint32_t, 2560>;
static_assert(sizeof(ShortChainSlots) < 58 * 1024 &&
              sizeof(LongChainSlots) + sizeof(OverflowPart) < 58 * 1024);

} // namespace loopwise::reduce
