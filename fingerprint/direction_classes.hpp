// Subchains that are the same knot when closed in one direction, found without closing any.
//
// A subchain that is longer by a bond differs from the shorter one in its closure: the path from that end has moved
// across the half strip that the bond sweeps in the direction. The knot stays unless another bond of the subchain
// passes through the half strip: seen along the direction, it passes over the bond. It also stays if all else that
// crosses the kink between these two bonds passes over it: below everything, the kink shrinks to a small arc with its
// own knot, if it has one, before as after. Subchains between which such steps lead are one class, and one closure
// tells the knot of all.
#pragma once

#include "fingerprint/matrix.hpp"
#include "libloopwise.h"

#include <cstdint>

namespace loopwise::fingerprint {

/// What a bond is to another, seen along a direction.
enum class Pass { apart, over, under, close };

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
    /// Where a bond crosses another, seen along the direction.
    struct Crossing {
        std::size_t other;
        double at, at_other; ///< the parts of the bonds before the crossing
        Pass pass;           ///< of the bond to the other
    };
    /// By bond. A bond has its first bead's number.
    using Crossings = std::vector<std::vector<Crossing>>;

    void look_along(int row);
    void find_crossings();
    static std::size_t left_out(const Crossings& crossings, std::size_t bond, const Crossing& over);
    static std::size_t left_out(const Crossings& crossings, std::size_t bond);
    void find_changes();
    void join(std::uint32_t a, std::uint32_t b);
    std::uint32_t root_of(std::uint32_t c);
    void label();
    void number();

    const Chain& chain_;
    std::vector<PointR3> seen_;       ///< the beads, z along the direction
    Crossings crossings_, backwards_; ///< of the chain, and of the chain from its last bead to its first
    /// By bond: subchains that begin here or later keep their knot if the bond is added at their back; those that end
    /// here or earlier keep it if the bond is added at their front.
    std::vector<std::size_t> first_kept_, last_kept_;
    std::vector<std::uint32_t> class_, parent_;
    std::vector<Subchain> shortest_;
};

} // namespace loopwise::fingerprint
