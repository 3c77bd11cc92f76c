// Subchains that are the same knot when closed in one direction, found without closing any.
//
// A subchain that is longer by a bond differs from the shorter one in its closure: the path from that end has moved
// across the half strip that the bond sweeps in the direction. The knot stays unless another bond of the subchain
// passes through the half strip: seen along the direction, it passes over the bond. Subchains between which steps
// without such a bond lead are one class, and one closure tells the knot of all.
#pragma once

#include "fingerprint/matrix.hpp"
#include "libloopwise.h"

#include <cstdint>

namespace loopwise::fingerprint {

/// For many directions one after another. One thread at a time may use it.
class DirectionClasses {
  public:
    /// Of the subchains too short for a knot.
    static constexpr std::uint32_t unknotted = 0;

    /// The chain must outlive it.
    explicit DirectionClasses(const Chain& chain) : chain_(chain) {}

    /// Finds the classes for a row of the table of directions.
    void find(int row);
    /// A shortest subchain of each class.
    const std::vector<Subchain>& shortest() const { return shortest_; }
    /// The class of each subchain, in the order of FingerprintMatrix::index().
    const std::vector<std::uint32_t>& classes() const { return class_; }

  private:
    void look_along(int row);
    void find_passes();
    void join(std::uint32_t a, std::uint32_t b);
    std::uint32_t root_of(std::uint32_t c);
    void label();
    void number();

    const Chain& chain_;
    std::vector<PointR3> seen_; ///< the beads, z along the direction
    /// By bond: the nearest later bond, and the nearest earlier one, that passes over it or too close to tell. A bond
    /// has its first bead's number.
    std::vector<std::size_t> later_over_, earlier_over_;
    std::vector<std::uint32_t> class_, parent_;
    std::vector<Subchain> shortest_;
};

} // namespace loopwise::fingerprint
