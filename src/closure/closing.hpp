// What the closures have in common: refusing empty input, drawing directions, numbering.
#pragma once

#include "libloopwise.h"

#include <optional>
#include <set>

namespace loopwise {

/// What a closure returns; an empty input counts as closed.
constexpr int closed = 0;
constexpr int not_closed = -1;

/// Whether there is nothing to close, which is said on std::clog.
bool refuse_empty(const Chain& chain);
bool refuse_empty(Structure& structure);

/// Rows of the table of directions, each drawn at most once.
class UnusedRows {
  public:
    /// One std::rand() for the row and one more for every row that was drawn before. There must be a
    /// row left among the first `rows`.
    int draw(int rows);

  private:
    std::set<int> used_;
};

/// A direction of the table at the given length, or nothing when it has none to take.
std::optional<PointR3> at_length(PointR3 direction, double length);

/// An atom at the point, numbered the given steps after another.
ChainAtom atom_after(const ChainAtom& last, PointR3 point, std::uint32_t steps = 1);

/// The largest identifier of a chain that has atoms: unlike maxIdChain(), it may be below -1.
int largest_id(const Chain& chain);

/// Appends the atoms of an arc; an empty arc closes nothing.
int append_arc(Chain& chain, const Chain& arc);

} // namespace loopwise
