// A picture of the knots of all stretches of a chain.
#pragma once

#include "survey/fingerprint.hpp"

namespace loopwise {

/// The colour of a knot, by its number among those of a fingerprint, where all closures give it; the unknot
/// is nearly white.
std::string knot_colour(std::size_t knot);
/// The same, paler for a smaller share.
std::string knot_colour(std::size_t knot, double share);

/// The SVG text of the triangle of all stretches: across the first residue, downwards the last one, with the
/// cores of the places marked.
std::string matrix_picture(const ChainFingerprint& fingerprint, const std::vector<KnotPlace>& places);

} // namespace loopwise
