// Triangle elimination on one chain or on all components of a structure: one engine.
#pragma once

#include "libloopwise.h"

#include <cstddef>
#include <span>

namespace loopwise {

/// The atoms of a component while it is reduced. They stay where the caller stores them: `count`
/// says how many of them, from the first on, are left.
struct Component {
    ChainAtom* atoms;
    std::size_t count;
    bool closed;
};

/// Below this a chain has no triangle to spare.
constexpr std::size_t fewest_atoms = 3;

/// Takes middle atoms of free triangles away until no triangle is free. A triangle is free when
/// contact() finds nothing between it and any segment that shares no atom with it, of its own
/// component or another. The first free triangle of the first component goes first, and after every
/// removal the search starts at the first triangle of the first component.
void eliminate(std::span<Component> components);

/// Whether a chain is a loop stored with its first atom once more at its end.
bool has_repeated_end(const Chain& chain);

/// The part of a chain that is reduced: all of it but a repeated end.
Component without_repeated_end(Chain& chain, bool closed);

/// Cuts the chain to what is left of it, with the atom that is first now repeated at its end if asked
/// for. Returns the number of its atoms. Needs no memory.
std::size_t finish(Chain& chain, const Component& reduced, bool repeat_end);

} // namespace loopwise
