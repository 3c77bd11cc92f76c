// The name of a closed polygon.
#pragma once

#include "knots/invariants.hpp"
#include "knots/knot_type.hpp"
#include "libloopwise.h"

#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace loopwise::knots {

/// What a polygon is, and what that rests on.
struct KnotName {
    KnotType type;
    int crossings = 0; ///< of the diagram after all moves
    std::vector<ComputedInvariant> invariants{};
};

/// Names the closed polygon through the beads, a segment joining the last to the first; a copy of the first bead at the
/// end is left out. Three different beads are the unknot. Fewer beads, two beads at one place, coordinates that are not
/// finite and polygons that meet themselves get no name. Allocates; throws nothing of its own; several threads may call
/// it at once.
KnotName knot_of(std::span<const ChainAtom> loop);

/// Names a diagram of one loop.
KnotName knot_of(Diagram diagram);

/// knot_of() with a memory: polygons that come down to the same small diagram are named once. For one thread at a
/// time.
class KnotNamer {
  public:
    /// The name stays until the next call.
    const KnotName& name(std::span<const ChainAtom> loop);

  private:
    std::unordered_map<std::string, KnotName> known_;
    KnotName last_;
};

} // namespace loopwise::knots
