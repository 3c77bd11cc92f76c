// Moves that take crossings away from a diagram and keep its knot.
#pragma once

#include "knots/diagram.hpp"

#include <cstddef>
#include <cstdint>

namespace loopwise::knots {

/// Undoes Reidemeister's moves I and II wherever they take crossings away. Returns whether any did.
bool undo_kinks_and_bigons(Diagram& diagram);

/// The moves above and, while more than `enough` crossings are left, pass moves: a part of a strand that is over (or
/// under) at all its crossings is rerouted where it has fewer. Every move takes crossings away.
void simplify(Diagram& diagram, int enough);

/// A sequence of random numbers, always the same.
class Draw {
  public:
    std::size_t operator()(std::size_t below) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::size_t>(state_ >> 33) % below;
    }

  private:
    std::uint64_t state_ = 1;
};

/// Reroutes a random part of a strand where it has as many crossings as before. Returns false where nothing changed.
bool reroute_at_random(Diagram& diagram, Draw& draw);

} // namespace loopwise::knots
