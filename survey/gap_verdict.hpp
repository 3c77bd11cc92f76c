// Whether the knot of a chain depends on the way that its missing residues take.
#pragma once

#include "polymer/bonds.hpp"
#include "survey/knot_count.hpp"

#include <functional>
#include <string>

namespace loopwise::survey {

/// Paths that are drawn across the gaps, and how many of them in 100 must keep the knot for it to stand.
inline constexpr std::size_t gap_paths = 100, least_agreeing = 95;

enum class Verdict {
    stands,    ///< at least 95 in 100 of the paths keep the knot
    hangs,     ///< on one or several gaps, each of which changes the knot by itself
    undecided, ///< on no gap alone, or the knot has no name, or the paths could not be closed
};

/// How many paths across one gap, or across all, keep the chain's knot.
struct PathCount {
    std::size_t paths = 0, agreeing = 0;

    bool stands() const { return 100 * agreeing >= least_agreeing * paths; }
};

/// The beads between two gaps, closed alone.
struct Fragment {
    std::size_t first = 0, last = 0;
    std::vector<KnotCount> knots{}; ///< as Tally has them
};

struct GapVerdict {
    Verdict verdict = Verdict::undecided;
    std::vector<std::size_t> hangs_on{}; ///< gaps, by their numbers in Bonds
    knots::KnotType knot{};              ///< of the chain whose gaps straight lines cross
    PathCount all{};                     ///< paths across all gaps at once
    std::vector<KnotCount> knots{};      ///< of all closures of these
    std::vector<std::size_t> beads{};    ///< of a path, for each gap
    std::vector<PathCount> alone{};      ///< for each gap, the others straight; empty where the knot stands. A gap that
                                         ///< was not varied has no path
    std::vector<Fragment> fragments{};

    /// The share of the chain's knot in all closures of all paths.
    double share() const;
};

struct JudgeSettings {
    bool is_ring = false; ///< the last bead is bonded to the first
    unsigned threads = 1;
};

/// Draws paths across the gaps of a chain, with fixed seeds, and closes the chain with each of them, in three
/// directions (one where there are fewer) that give its knot while the gaps are straight. So a path that changes the
/// knot does so by itself and not by the choice of the direction. A path keeps the knot if most of its closures do.
/// Calls `path_begins` for each path, from any thread; what it throws ends the work. The result is the same for any
/// number of threads.
GapVerdict judge_gaps(const polymer::NamedChain& chain, const polymer::Bonds& bonds, const knots::KnotType& knot,
                      const JudgeSettings& settings, const std::function<void()>& path_begins);

/// "stands", "undecided", "hangs on the gap at 52-67", "hangs on the gaps at 52-67 and 130-137".
std::string text(const GapVerdict& verdict, const polymer::Bonds& bonds,
                 const std::vector<polymer::ResidueId>& residues);

} // namespace loopwise::survey
