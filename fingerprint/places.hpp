// The places of knots along a chain.
#pragma once

#include "fingerprint/sampler.hpp"

#include <optional>
#include <string>

namespace loopwise::fingerprint {

/// What the knot of a place is to the longer subchains around its core.
enum class PlaceKind {
    knot,     ///< the whole chain's knot
    factor,   ///< of the whole chain's knot
    slipknot, ///< the whole chain lacks it, or a subchain around the core clearly does: see is_clear()
    subknot,  ///< not the chain's knot; names do not tell whether the chain's knot holds it
};

/// "knot", "factor", "slipknot" or "subknot".
std::string text(PlaceKind kind);

/// A place where a knot is.
struct KnotPlace {
    knots::KnotType knot;
    double share = 0;             ///< of the closures of the whole chain
    double greatest_share = 0;    ///< among the subchains that hold the core and are this knot most often
    Subchain greatest;            ///< the shortest with that share
    std::optional<Subchain> core; ///< see find_cores()
    /// The first and the last residue of the core are known to within as many residues; 1 is exact.
    std::size_t core_within = 1;
    PlaceKind kind = PlaceKind::knot;
};

/// The places of all knots: those of the chain's own knot first, then by greatest share. A knot without a core has one
/// place.
std::vector<KnotPlace> find_places(const SampledSubchains& sampled);

} // namespace loopwise::fingerprint
