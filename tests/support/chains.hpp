// Chains to try things on, the same for the same seed on every machine.
#pragma once

#include "libloopwise.h"

#include <random>
#include <string>

namespace chains {

class Random {
  public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(engine_() >> 11) * 0x1p-53);
    }
    int below(int limit) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(limit)); }
    PointR3 direction();

  private:
    std::mt19937_64 engine_;
};

/// What a chain is like; every kind but the first few is nasty in its own way.
enum class Kind {
    compact,      ///< self-avoiding, beads 3.8 apart, inside a sphere, like a protein
    tangle,       ///< points at random in a cube
    lattice,      ///< a walk on the integer lattice: exact zeros everywhere
    planar,       ///< in the plane z = 0
    straight,     ///< on one line, up to rounding
    near,         ///< within a few tolerances of each other
    huge,         ///< about 1e150: determinants overflow
    tiny,         ///< about 1e-160: determinants underflow
    not_finite,   ///< a tangle with infinities and not-a-numbers
    coincident,   ///< few different points, each taken often
    mixed_scales, ///< neighbours 1e-12 and 1e12 apart
};
constexpr Kind all_kinds[] = {Kind::compact,    Kind::tangle,     Kind::lattice,     Kind::planar,
                              Kind::straight,   Kind::near,       Kind::huge,        Kind::tiny,
                              Kind::not_finite, Kind::coincident, Kind::mixed_scales};

Chain make(Kind kind, int length, Random& random);

/// The same chain stored as a loop, its first atom once more at its end.
Chain with_repeated_end(Chain chain);

/// Points spread over a sphere: of all kinds, the one that leaves a diameter nothing to pass over.
Chain on_sphere(int length, Random& random);

/// Six significant digits of everything would hide a difference in the last bit: equal means equal bits.
bool same_bits(const Chain& a, const Chain& b);
bool starts_with(const Chain& chain, const Chain& start);

/// For failure messages: text from which the chain can be built again, to the last bit.
std::string text(const Chain& chain);

} // namespace chains
