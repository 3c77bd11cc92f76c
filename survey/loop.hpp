// Closed chains.
#pragma once

#include "libloopwise.h"

#include <span>

namespace loopwise::survey {

/// Position of a bead in a closed chain, from 0: the chain's own beads come first, then those that close it. A type of
/// its own: a bead's `id` elsewhere is the number of a residue.
enum class LoopPosition : std::size_t {};
constexpr std::size_t index_of(LoopPosition position) { return static_cast<std::size_t>(position); }

/// A closed chain, or the beads that its reduction leaves.
struct Loop {
    Chain beads;         ///< with their positions in place of identifiers: see position()
    std::size_t own = 0; ///< how many are the chain's own; they come first

    LoopPosition position(std::size_t bead) const { return static_cast<LoopPosition>(beads[bead].id); }
};

/// How many beads of a reduced loop are the chain's own.
std::size_t own_beads(const Chain& reduced, std::size_t beads_of_chain);

/// The beads at these positions of a closed chain.
Loop loop_at(const Chain& closed, std::span<const std::size_t> positions, std::size_t beads_of_chain);

} // namespace loopwise::survey
