// The largest distance within a set of atoms.
#pragma once

#include "libloopwise.h"
#include "src/model/instruction_sets.hpp"

#include <span>

namespace loopwise::model {

/// A set of atoms that only grows, with the square of its diameter: the largest squared_distance() of any
/// two. The square root is monotone and correctly rounded, so the root of the largest square is the
/// largest distance to the last bit. Squares that are not a number never count.
class Diameter {
  public:
    explicit Diameter(std::span<const Chain> components);

    double value() const;

    /// Takes a further point into account; the components must hold all atoms that count so far.
    void include(PointR3 point, std::span<const Chain> components);

  private:
    double squared_ = 0.0;
};

/// Positions coordinate by coordinate.
struct Positions {
    const double *x, *y, *z;
    std::size_t count; ///< a multiple of distance_lanes
};
constexpr std::size_t distance_lanes = 8;

/// The largest squared distance from a point to the positions, or the one given if that is larger.
using FarthestSquare = double (*)(const Positions& positions, PointR3 point, double at_least);

/// All versions give the same result to the last bit.
FarthestSquare farthest_square(InstructionSet set);

} // namespace loopwise::model
