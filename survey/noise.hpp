// How much a knot depends on the exact places of the beads.
#pragma once

#include "survey/survey.hpp"

namespace loopwise::survey {

struct NoisePlan {
    double size = 0; ///< standard deviation of each coordinate's error, in the unit of the chain
    std::size_t repeats = 20;
    std::uint64_t seed = 0;
};

/// The most frequent knot of a survey, in surveys of the same chain whose beads are moved at random.
struct Noise {
    NoisePlan plan{};
    knots::KnotType knot{};
    double least = 0, mean = 0, greatest = 0; ///< share of the knot among the closures of one repeat
    std::size_t kept = 0;                     ///< repeats in which it is the most frequent one
    std::vector<KnotCount> knots{};           ///< most frequent knots, and in how many repeats

    bool vanishes() const { return 2 * kept < plan.repeats; }
};

/// A knot that vanishes under this noise, in angstroms, depends on details that no measurement is sure of.
inline constexpr double small_noise = 0.5;

/// Moves every bead by a Gaussian error, independent in each coordinate (Box and Muller, "A note on the generation of
/// random normal deviates", Ann. Math. Stat. 29, 1958).
void shake(polymer::NamedChain& chain, double size, std::uint64_t seed, std::size_t repeat);

/// Repeats the survey of a single chain whose knots are named. Calls watcher.path_begins() for every closure.
Noise noise_of(const polymer::NamedChain& chain, const Result& result, const NoisePlan& plan, Watcher& watcher);

} // namespace loopwise::survey
