// Triangle elimination on one chain or on all components of a structure: one engine.
#pragma once

#include "reduce/beads.hpp"

#include <cstddef>
#include <span>

namespace loopwise {

/// Takes middle beads of free triangles away until no triangle is free. A triangle is free when
/// contact() finds nothing between it and any segment that shares no bead with it, of its own ring or
/// another. The first free triangle of the first ring goes first, and after every removal the search
/// starts at the first triangle of the first ring. Rings of three beads or fewer only stand in the way.
///
/// The literal procedure tests every triangle from the first one on, after every removal, against all
/// segments. This one comes to the same result with less: a triangle stays blocked while its corners and
/// the segment that blocked it are there, so only those are tested again for which one of them has gone;
/// and the test passes over segments that clearing proves to be out of reach.
///
/// The workspace must have room for all beads and a seam per ring; a single ring may be longer. Takes no
/// further memory, whatever the length. Afterwards the beads left are the first `count` atoms of a ring.
void eliminate(std::span<Ring> rings, const Workspace& workspace, FindDoubts find_doubts);

/// The same with the fastest way of clearing that this processor has.
void eliminate(std::span<Ring> rings, const Workspace& workspace);

/// Whether a chain is a loop stored with its first atom once more at its end.
bool has_repeated_end(const Chain& chain);

/// The part of a chain that is reduced: all of it but a repeated end.
Ring without_repeated_end(Chain& chain, bool closed);

/// Cuts the chain to what is left of it, with the atom that is first now repeated at its end if asked
/// for. Returns the number of its atoms. Needs no memory.
std::size_t finish(Chain& chain, const Ring& reduced, bool repeat_end);

} // namespace loopwise
