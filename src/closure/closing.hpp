// What the closures have in common: drawing rows of the table, placing and numbering atoms.
#pragma once

#include "src/closure/closures.hpp"

#include <optional>
#include <set>

namespace loopwise::closure {

/// One draw for a row among the first `rows`.
int draw_row(const Draw& draw, int rows);

/// Rows of the table of directions, each given out at most once.
class UnusedRows {
  public:
    /// One draw for the row and one more for every row that was drawn before. There must be a row left
    /// among the first `rows`.
    int draw(const Draw& draw, int rows);

  private:
    std::set<int> used_;
};

/// A direction of the table at the given length, or nothing when it has none to take.
std::optional<PointR3> at_length(PointR3 direction, double length);

/// An atom at the point, numbered the given steps after another.
ChainAtom atom_after(const ChainAtom& last, PointR3 point, std::uint32_t steps = 1);

/// The largest identifier of a chain that has atoms: unlike maxIdChain(), it may be below -1.
std::int32_t largest_id(const Chain& chain);

/// Appends the atoms of an arc; an empty arc closes nothing.
Closing append_arc(Chain& chain, const Chain& arc);

} // namespace loopwise::closure
