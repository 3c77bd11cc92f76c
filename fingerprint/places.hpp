// The places of knots along a chain.
#pragma once

#include "fingerprint/sampler.hpp"

#include <optional>

namespace loopwise::fingerprint {

/// A place where a knot is.
struct KnotPlace {
    knots::KnotType knot;
    double share = 0;             ///< of the closures of the whole chain
    double greatest_share = 0;    ///< among the subchains that hold the core and are this knot most often
    Subchain greatest;            ///< the shortest with that share
    std::optional<Subchain> core; ///< see find_cores()
    /// The first and the last residue of the core are known to within as many residues; 1 is exact.
    std::size_t core_within = 1;
    /// The chain is another knot or unknotted, or a subchain around the core clearly is: see clear_share.
    bool slipknot = false;
};

/// Shares scatter from subchain to subchain. A slipknot needs a subchain that is the knot with at least this share
/// inside one that is something else with at least this share.
inline constexpr double clear_share = 2.0 / 3.0;

/// The places of all knots: those of the chain's own knot first, then by greatest share. A knot without a core has one
/// place.
std::vector<KnotPlace> find_places(const SampledSubchains& sampled);

} // namespace loopwise::fingerprint
