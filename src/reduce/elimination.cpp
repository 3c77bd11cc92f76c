#include "reduce/elimination.hpp"

#include "model/comparisons.hpp"
#include "model/points.hpp"
#include "reduce/intersection.hpp"

#include <algorithm>

namespace loopwise {
namespace {

PointR3 corner(const Component& c, std::size_t i) { return position(c.atoms[i % c.count]); }

Triangle triangle_at(const Component& c, std::size_t i) {
    return {corner(c, i), corner(c, i + 1), corner(c, i + 2)};
}

std::size_t segment_count(const Component& c) {
    if (c.count == 0) return 0;
    return c.closed ? c.count : c.count - 1;
}

bool blocked_by_segment(const Triangle& triangle, const Component& c, std::size_t j) {
    return contact(triangle, {corner(c, j), corner(c, j + 1)}) != Contact::none;
}

/// Segment j shares an atom with triangle i when it begins at one of the triangle's atoms or at the
/// atom before them.
bool shares_an_atom(const Component& c, std::size_t i, std::size_t j) {
    const std::size_t from_atom_before = (j + c.count + 1 - i) % c.count;
    return from_atom_before <= fewest_atoms;
}

bool is_free(std::span<const Component> components, const Component& own, std::size_t i) {
    const Triangle triangle = triangle_at(own, i);
    for (const Component& c : components)
        for (std::size_t j = 0; j < segment_count(c); ++j)
            if (!(&c == &own && shares_an_atom(c, i, j)) && blocked_by_segment(triangle, c, j)) return false;
    return true;
}

void erase_atom(Component& c, std::size_t index) {
    std::copy(c.atoms + index + 1, c.atoms + c.count, c.atoms + index);
    --c.count;
}

bool remove_first_free(std::span<Component> components) {
    for (Component& c : components) {
        if (c.count <= fewest_atoms) continue;
        const std::size_t candidates = c.closed ? c.count : c.count - 2;
        for (std::size_t i = 0; i < candidates; ++i) {
            if (!is_free(components, c, i)) continue;
            erase_atom(c, (i + 1) % c.count);
            return true;
        }
    }
    return false;
}

} // namespace

void eliminate(std::span<Component> components) {
    while (remove_first_free(components)) {}
}

bool has_repeated_end(const Chain& chain) {
    return !chain.empty() && chain.front().id == chain.back().id &&
           equal(0, distance(position(chain.front()), position(chain.back())));
}

Component without_repeated_end(Chain& chain, bool closed) {
    return {chain.data(), chain.size() - has_repeated_end(chain), closed};
}

std::size_t finish(Chain& chain, const Component& reduced, bool repeat_end) {
    // A chain of one atom was its own repeat and keeps it.
    if (repeat_end && reduced.count > 0) chain[reduced.count] = ChainAtom(chain.front());
    chain.resize(reduced.count + repeat_end);
    return chain.size();
}

} // namespace loopwise
