#include "src/reduce/reduction.hpp"

#include "src/model/comparisons.hpp"

#include <bit>
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>

namespace loopwise::reduce {

using namespace model;
namespace {

/// Whether a chain is a loop stored with its first atom once more at its end.
bool has_repeated_end(const Chain& chain) {
    return !chain.empty() && chain.front().id == chain.back().id &&
           equal(0, distance(position(chain.front()), position(chain.back())));
}

/// Cuts the chain to what is left of it, with the atom that is first now repeated at its end if asked for.
std::size_t finish(Chain& chain, std::size_t left, bool repeat_end) {
    // A chain of one atom was its own repeat and keeps it.
    if (repeat_end && left > 0) chain[left] = ChainAtom(chain.front());
    chain.resize(left + repeat_end);
    return chain.size();
}

const Kernels& fastest() {
    static const Kernels& chosen = kernels(model::chosen_instruction_set());
    return chosen;
}

/// Fewer beads than this are searched as quickly without an index.
constexpr std::size_t fewest_indexed = 3000;

/// The slots of a structure, or of a chain longer than the stack has room for, on the heap.
class HeapSlots {
  public:
    using Id = std::uint32_t;
    explicit HeapSlots(std::size_t count)
        : count_(count), floats_(new float[3 * (count + position_padding)]), ids_(new Id[2 * count]) {}
    Slots<Id> get() {
        const std::size_t row = count_ + position_padding;
        float* const x = floats_.get();
        return {count_, x, x + row, x + 2 * row, ids_.get(), ids_.get() + count_};
    }

  private:
    std::size_t count_;
    std::unique_ptr<float[]> floats_;
    std::unique_ptr<Id[]> ids_;
};

} // namespace

template <class Id>
std::size_t eliminate(const Component& component, const Slots<Id>& slots, const Kernels& kernels,
                      const Indexing& indexing) {
    GapBuffer<Id> beads({component.atoms, component.count}, component.closed, 0, slots);
    Elimination<Id>({&beads, 1}, {slots.x, slots.y, slots.z}, kernels, indexing).run();
    beads.pack();
    return beads.count();
}
template std::size_t eliminate(const Component&, const Slots<std::uint16_t>&, const Kernels&,
                               const Indexing&);
template std::size_t eliminate(const Component&, const Slots<std::uint32_t>&, const Kernels&,
                               const Indexing&);

namespace {

template <class StackSlots> [[gnu::noinline]] std::size_t eliminate_on_stack(const Component& component) {
    StackSlots slots;
    return eliminate(component, slots.get(), fastest());
}

/// Apart from a repeated end.
template <class Eliminate> std::size_t reduce_with(Chain& chain, bool closed, Eliminate eliminate_component) {
    const bool repeated = has_repeated_end(chain);
    const Component component{chain.data(), chain.size() - repeated, closed || repeated};
    return finish(chain, eliminate_component(component), repeated);
}

} // namespace

std::size_t reduce(Chain& chain, bool closed) {
    if (chain.size() < ShortChainSlots::count) return reduce_on_stack(chain, closed);
    return reduce_with(chain, closed, [](const Component& component) {
        HeapSlots slots(component.count + 1);
        SegmentIndex index(fastest(), component.count, component.count);
        return eliminate(component, slots.get(), fastest(), {&index, fewest_indexed});
    });
}

std::size_t reduce_on_stack(Chain& chain, bool closed) {
    return reduce_with(chain, closed, [](const Component& component) {
        return component.count < ShortChainSlots::count ? eliminate_on_stack<ShortChainSlots>(component)
                                                        : eliminate_on_stack<LongChainSlots>(component);
    });
}

std::size_t reduce(Structure& structure, bool closed) { return reduce(structure, closed, fewest_indexed); }

std::size_t reduce(Structure& structure, bool closed, std::size_t fewest_beads) {
    // As soon as one component is marked as a loop, the marks say for all which are loops.
    const bool marked = std::any_of(structure.begin(), structure.end(), has_repeated_end);
    std::vector<Component> components;
    std::vector<GapBuffer<std::uint32_t>> buffers;
    components.reserve(structure.size()), buffers.reserve(structure.size());
    std::size_t count = 0;
    for (Chain& chain : structure) {
        const bool repeated = has_repeated_end(chain);
        components.push_back({chain.data(), chain.size() - repeated, marked ? repeated : closed});
        count += components.back().count + 1;
    }
    HeapSlots memory(count);
    const Slots<std::uint32_t> slots = memory.get();
    std::size_t first = 0;
    for (const Component& c : components) {
        buffers.emplace_back(std::span(c.atoms, c.count), c.closed, first, slots);
        first += c.count + 1;
    }
    std::optional<SegmentIndex> index;
    if (count >= fewest_beads) index.emplace(fastest(), count, count);
    const Indexing indexing{index ? &*index : nullptr, fewest_beads};
    Elimination<std::uint32_t>(buffers, {slots.x, slots.y, slots.z}, fastest(), indexing).run();

    std::size_t total = 0;
    for (std::size_t i = 0; i < structure.size(); ++i) {
        buffers[i].pack();
        total += finish(structure[i], buffers[i].count(), marked && components[i].closed);
    }
    return total;
}

} // namespace loopwise::reduce

int ChainReduce(std::vector<ChainAtom>& chain, bool closed) {
    // The Polish line is part of the interface, to the byte.
    std::cout << "JESTEM w loopwise!, ChainReduce - czy to jeszcze w ogole jest wywolywane, a nie zawsze "
                 "ChainsReduce?, EPS="
              << EPS << std::endl;
    return static_cast<int>(loopwise::reduce::reduce_on_stack(chain, closed));
}

int ChainsReduce(std::vector<std::vector<ChainAtom>>& structure, bool closed) {
    return static_cast<int>(loopwise::reduce::reduce(structure, closed));
}
