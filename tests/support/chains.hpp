// Chains to try things on, the same for the same seed on every machine.
#pragma once

#include "libloopwise.h"

#include <cstring>
#include <random>
#include <span>
#include <string>

namespace chains {

/// Numbers that follow from a seed, or the bytes that a fuzzer chose as long as there are any.
class Random {
  public:
    explicit Random(std::uint64_t seed, std::span<const std::uint8_t> bytes = {}) : engine_(seed), bytes_(bytes) {}
    std::uint64_t bits() { return take<std::uint64_t>(); }
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(bits() >> 11) * 0x1p-53);
    }
    int below(int limit) {
        const std::uint64_t number = limit > 256 ? take<std::uint32_t>() : take<std::uint8_t>();
        return static_cast<int>(number % static_cast<std::uint64_t>(limit));
    }
    PointR3 direction();

  private:
    template <class Number> std::uint64_t take() {
        if (bytes_.size() < sizeof(Number)) return engine_();
        Number number;
        std::memcpy(&number, bytes_.data(), sizeof number);
        bytes_ = bytes_.subspan(sizeof number);
        return number;
    }
    std::mt19937_64 engine_;
    std::span<const std::uint8_t> bytes_;
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
    any_bits,     ///< any numbers at all
};
constexpr Kind all_kinds[] = {Kind::compact,    Kind::tangle,     Kind::lattice,      Kind::planar,
                              Kind::straight,   Kind::near,       Kind::huge,         Kind::tiny,
                              Kind::not_finite, Kind::coincident, Kind::mixed_scales, Kind::any_bits};

Chain make(Kind kind, int length, Random& random);

/// The connected sum of two loops: the second stands to the right of the first; both are cut where they are nearest.
Chain sum(Chain a, Chain b);

/// Up to six chains of one kind: loops, empty ones and such without length among them, some far apart, some
/// long, some with identifiers at random.
Structure make_structure(Random& random);

/// The same chain stored as a loop, its first atom once more at its end.
Chain with_repeated_end(Chain chain);

/// Points spread over a sphere: of all kinds, the one that leaves a diameter nothing to pass over.
Chain on_sphere(int length, Random& random);

/// Six significant digits of everything would hide a difference in the last bit: equal means equal bits,
/// but for not-a-numbers, which have many.
bool same_bits(const Chain& a, const Chain& b);
bool starts_with(const Chain& chain, const Chain& start);

/// For failure messages: text from which the chain can be built again, to the last bit.
std::string text(const Chain& chain);

} // namespace chains
