// A closure of a subchain that gives its knot, to be shown.
#pragma once

#include "fingerprint/fingerprint.hpp"

namespace loopwise::fingerprint {

/// The first closure of a subchain that gives its most frequent knot, reduced.
struct TypicalClosure {
    Subchain subchain;
    int row = 0;          ///< of the table of directions
    knots::KnotType knot; ///< see counted_as()
    Chain closing;        ///< the beads that close the subchain, from its last bead to its first
    /// The beads left: positions in the chain, then from its size on those of `closing`.
    std::vector<std::size_t> left;
};

/// Subchains whose closures are worth showing: the whole chain first, then the cores of the places, then all tested
/// subchains that may be knotted, or if those are more than `most`, those on lines of the grid that are evenly apart.
std::vector<Subchain> shown_subchains(const ChainFingerprint& of, const std::vector<KnotPlace>& places,
                                      std::size_t most);

/// The typical closures of tested subchains of the chain, in this order; see FingerprintPlan for the threads. Throws
/// what the watcher throws.
std::vector<TypicalClosure> typical_closures(const Chain& chain, const ChainFingerprint& of,
                                             const std::vector<Subchain>& subchains, unsigned threads,
                                             FingerprintWatcher& watcher);

} // namespace loopwise::fingerprint
