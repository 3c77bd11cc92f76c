// Which knot is a closed polygon?
#pragma once

#include "knots/diagram.hpp"
#include "knots/laurent.hpp"
#include "knots/view.hpp"
#include "libloopwise.h"

#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace loopwise::knots {

enum class KnotStatus {
    named,       ///< one name
    several,     ///< several knots of the table have these polynomials: all their names
    unknown,     ///< no knot of the table has these polynomials
    too_complex, ///< too many crossings are left to compute the polynomials, or to tell the unknot by them
    bad_polygon, ///< the fault says why
};

/// What a polygon is, as far as its polynomials tell.
struct KnotName {
    KnotStatus status = KnotStatus::bad_polygon;
    PolygonFault fault = PolygonFault::none;
    /// Rolfsen's numbers with a hand, as "0_1", "+3_1", "4_1", "+3_1 # -3_1".
    std::vector<std::string> names;
    /// Whether every knot that the diagram can be is among the names: it has at most nine crossings or is the
    /// unknot. Otherwise a knot of more than nine crossings may have the same polynomials.
    bool proven = false;
    int crossings = 0; ///< of the diagram after all moves
    Laurent jones;     ///< without coefficients when not computed
    Laurent alexander; ///< likewise

    /// "+3_1"; "9_12 or 4_1 # 5_2" with their hands; "unknown: " and the Jones polynomial; "not named: 71 crossings";
    /// "not named: repeated beads".
    std::string text() const;
};

/// Names the closed polygon through the beads, a segment joining the last to the first; a copy of the first bead at the
/// end is left out. Three different beads are the unknot. Fewer beads, two beads at one place, coordinates that are not
/// finite and polygons that meet themselves get no name. Allocates; throws nothing of its own; threads may call it at
/// once.
KnotName knot_of(std::span<const ChainAtom> loop);

/// Of a diagram of one loop.
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
