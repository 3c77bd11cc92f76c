#include "src/reduce/reduction.hpp"

#include "src/model/comparisons.hpp"
#include "src/reduce/components.hpp"

#include <algorithm>
#include <iostream>
#include <vector>

namespace loopwise::reduce {

using namespace model;
namespace {

/// Whether a chain is closed and stores its first atom again at its end.
bool has_repeated_end(const Chain& chain) {
    return !chain.empty() && chain.front().id == chain.back().id &&
           equal(0, distance(position(chain.front()), position(chain.back())));
}

/// Cuts the chain to the beads that are left, and repeats the new first atom at the end if asked to.
std::size_t finish(Chain& chain, std::size_t left, bool repeat_end) {
    // A chain of one atom was its own repeat and keeps it.
    if (repeat_end && left > 0) chain[left] = ChainAtom(chain.front());
    chain.resize(left + repeat_end);
    return chain.size();
}

const Kernels& fastest() {
    static const Kernels& chosen = kernels(chosen_instruction_set());
    return chosen;
}

template <class StackSlots> [[gnu::noinline]] void eliminate_on_stack(Component& component) {
    StackSlots slots;
    eliminate(component, slots.get(), fastest());
}

/// Calls eliminate(component) for the chain without its repeated end.
template <class Eliminate> std::size_t reduce_by(Chain& chain, bool closed, Eliminate eliminate) {
    const bool repeated = has_repeated_end(chain);
    Component component{chain.data(), chain.size() - repeated, closed || repeated};
    eliminate(component);
    return finish(chain, component.count, repeated);
}

} // namespace

std::size_t reduce(Chain& chain, bool closed) {
    if (chain.size() < ShortChainSlots::count) return reduce_on_stack(chain, closed);
    return reduce_by(chain, closed, [](Component& component) {
        eliminate({&component, 1}, fastest(), usual_fewest_indexed);
    });
}

std::size_t reduce_on_stack(Chain& chain, bool closed) {
    return reduce_by(chain, closed, [](Component& component) {
        component.count < ShortChainSlots::count ? eliminate_on_stack<ShortChainSlots>(component)
                                                 : eliminate_on_stack<LongChainSlots>(component);
    });
}

std::size_t reduce(Structure& structure, bool closed, std::size_t fewest_indexed) {
    // If any component has a repeated end, repeated ends decide for all components which are closed.
    const bool marked = std::any_of(structure.begin(), structure.end(), has_repeated_end);
    std::vector<Component> components;
    components.reserve(structure.size());
    for (Chain& chain : structure) {
        const bool repeated = has_repeated_end(chain);
        components.push_back({chain.data(), chain.size() - repeated, marked ? repeated : closed});
    }
    eliminate(components, fastest(), fewest_indexed);
    std::size_t total = 0;
    for (std::size_t i = 0; i < structure.size(); ++i)
        total += finish(structure[i], components[i].count, marked && components[i].closed);
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
