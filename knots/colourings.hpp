// Colourings of a diagram: homomorphisms of the knot group to finite groups.
#pragma once

#include "knots/diagram.hpp"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

namespace loopwise::knots {

/// A permutation of the letters 0 to 6.
using Permutation = std::array<std::uint8_t, 7>;

/// The conjugates of a permutation x in the group that x and others generate.
class ConjugacyClass {
  public:
    explicit ConjugacyClass(std::initializer_list<Permutation> generators); ///< x is the first
    std::size_t size() const { return members_.size(); }
    const Permutation& member(std::size_t i) const { return members_[i]; } ///< x is member 0
    /// Number of b^-1 a b, or with `back` of b a b^-1, for members a and b.
    std::uint8_t conjugate(std::uint8_t a, std::uint8_t b, bool back) const {
        return conjugates_[((back ? size() : 0) + a) * size() + b];
    }

  private:
    std::vector<Permutation> members_;
    std::vector<std::uint8_t> conjugates_;
};

/// The classes that tell knots apart: elements of orders 3 and 5 of the alternating group A5, 4-cycles of S5, elements
/// of orders 3, 4 and 7 of PSL(2,7).
std::span<const ConjugacyClass> colouring_classes();

/// For every class, the homomorphisms of the knot group that take the meridian of one arc to x: how many of them take
/// its longitude to x^0, x^1, x^2, ... They colour the arcs with members of the class (Eisermann, "Knot colouring
/// polynomials", Pacific J. Math. 231, 2007).
using Colourings = std::vector<std::vector<std::int64_t>>;

/// Only powers of x may commute with it. The counts depend neither on the diagram nor on the arc; nor, as long as some
/// automorphism of the group takes x to x^-1, on the direction of the knot. Nothing for links, for more crossings than
/// the limit in invariants.hpp, or when the search takes too long.
std::optional<Colourings> colourings(const Diagram& diagram,
                                     std::span<const ConjugacyClass> classes = colouring_classes());

/// Of the mirror image.
Colourings mirrored(const Colourings& colourings);
/// Of the connected sum. Nothing when a count leaves the 64-bit range.
std::optional<Colourings> product(const Colourings& a, const Colourings& b);

} // namespace loopwise::knots
