// The cores of knots, the tails beside them and the depth of the chain's knot, among tested subchains.
#pragma once

#include "fingerprint/grid.hpp"

#include <map>
#include <span>
#include <vector>

namespace loopwise::fingerprint {

/// A subchain that was closed, and the closures that gave its most frequent knot.
struct TestedSubchain {
    Subchain subchain;
    std::uint16_t closures;
};

/// The order in which the cores of a knot are looked for: the shortest first, of equal length the greatest share,
/// then the first along the chain.
bool comes_before(const TestedSubchain& a, const TestedSubchain& b);

/// The cores of a knot among the tested subchains that are this knot in enough of their closures. The one
/// that comes before all others is a core, and so is the next that has no bead in common with a core before it.
std::vector<Subchain> find_cores(std::vector<TestedSubchain> candidates);

/// By the number of the knot.
using CandidatesByKnot = std::map<std::uint16_t, std::vector<TestedSubchain>>;
using CoresByKnot = std::map<std::uint16_t, std::vector<Subchain>>;

CoresByKnot find_cores(const CandidatesByKnot& candidates);

/// Whether quartering the mixed block may change these cores or find one more.
bool may_change_cores(const Block& block, const FingerprintMatrix& matrix, std::size_t least_closures,
                      const CoresByKnot& cores);

/// The last of these cores of a knot begins and ends within as many beads of where it would if every subchain were
/// tested, as far as the tested ones tell; 1 is exact. It may be in an unseen block with a subchain on its rim that is
/// knotted in more than a tenth of its closures.
std::size_t core_within(std::span<const Block> unseen, const FingerprintMatrix& matrix, std::size_t closures,
                        std::span<const Subchain> cores);

/// The beads in front of a core and behind it.
inline std::array<std::size_t, 2> tails_of(const Subchain& core, std::size_t beads) {
    return {core.first, beads - 1 - core.last};
}

/// The ends of a chain, as positions in arrays.
enum End : std::size_t { front, back };
inline constexpr std::array ends{front, back};

/// The depth of the chain's knot: how many beads can be taken off each end, and the knot stays all the way.
std::array<std::size_t, 2> depth_of(const FingerprintMatrix& matrix);

/// The core of a search from the top: beads are taken off one end while the most frequent knot stays the chain's, then
/// off the other. The shorter of both orders; the one that begins at the front if they are equally long.
Subchain core_from_top(const FingerprintMatrix& matrix);

/// Where the depth may end, as far as tested subchains tell.
class DepthLimits {
  public:
    explicit DepthLimits(const FingerprintMatrix& matrix);
    bool may_end_in(const Block& block, End end) const;

  private:
    std::size_t beads_;
    std::array<std::size_t, 2> limits_; ///< beads off that end give a tested subchain that is another knot
};

} // namespace loopwise::fingerprint
