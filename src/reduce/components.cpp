#include "src/reduce/components.hpp"

#include "src/reduce/elimination.hpp"

#include <optional>
#include <type_traits>
#include <vector>

namespace loopwise::reduce {

template <class Id> void eliminate(Component& component, const Slots<Id>& slots, const Kernels& kernels) {
    const std::span<ChainAtom> atoms(component.atoms, component.count);
    if constexpr (std::is_same_v<Id, OverflowBuffer::Id>) {
        if (atoms.size() >= slots.count) {
            component.count = OverflowElimination(atoms, component.closed, slots, kernels).run();
            return;
        }
    }
    GapBuffer<Id> beads(atoms, component.closed, 0, slots);
    Elimination<Id>({&beads, 1}, kernels).run();
    component.count = beads.pack();
}
template void eliminate(Component&, const Slots<std::uint16_t>&, const Kernels&);
template void eliminate(Component&, const Slots<std::uint32_t>&, const Kernels&);

void eliminate(std::span<Component> components, const Kernels& kernels, std::size_t fewest_indexed) {
    std::size_t count = 0;
    for (const Component& component : components) count += component.count + 1;
    HeapSlots memory(count);
    std::vector<GapBuffer<HeapSlots::Id>> buffers;
    buffers.reserve(components.size());
    std::size_t first = 0;
    for (const Component& c : components) {
        buffers.emplace_back(std::span(c.atoms, c.count), c.closed, first, memory.get());
        first += c.count + 1;
    }
    std::optional<SegmentIndex> index;
    if (count >= fewest_indexed) index.emplace(kernels, count, count);
    Elimination<HeapSlots::Id>(buffers, kernels, index ? &*index : nullptr, fewest_indexed).run();
    for (std::size_t i = 0; i < components.size(); ++i) components[i].count = buffers[i].pack();
}

} // namespace loopwise::reduce
