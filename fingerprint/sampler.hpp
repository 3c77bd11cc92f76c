// Closes the subchains of a chain that its policy asks for.
#pragma once

#include "fingerprint/budget.hpp"
#include "fingerprint/knot_numbers.hpp"

namespace loopwise::fingerprint {

struct FingerprintPlan {
    std::size_t closures = 100; ///< of each subchain: the first of farthest_point_order()
    SamplingPolicy policy{};
    unsigned threads = 1;
    std::size_t most_memory = SIZE_MAX; ///< in bytes, for the matrix
    double core_share = 0.5;            ///< least share of a knot in its core

    /// The least closures that have the share, at least one.
    std::size_t core_closures() const;
};

/// What closing the subchains of a chain gave.
struct SampledSubchains {
    std::size_t closures = 0;           ///< of each subchain
    std::size_t step = 1;               ///< of the grid; 1: every subchain was closed
    std::size_t tested = 0;             ///< subchains that were closed
    std::vector<knots::KnotType> knots; ///< by number: the unknot first, the others in order
    FingerprintMatrix matrix;
    KnotCounts whole{};          ///< the closures of the whole chain
    std::vector<Block> open{};   ///< mixed blocks whose borders were not followed
    std::vector<Block> unseen{}; ///< all blocks that hold subchains which were not tested
    double core_share = 0.5;
    std::size_t core_closures = 1; ///< see FingerprintPlan

    bool is_knot(std::size_t number) const { return knots[number].is_knot(); }
    double share_of(std::size_t count) const { return static_cast<double>(count) / static_cast<double>(closures); }
};

/// See fingerprint_of().
SampledSubchains sample_subchains(const Chain& chain, const FingerprintPlan& plan, FingerprintWatcher& watcher);

} // namespace loopwise::fingerprint
