// A picture of the knots of all stretches of a chain.
#pragma once

#include "fingerprint/fingerprint.hpp"

namespace loopwise::draw {

/// The colour of a knot, by its number among those of the fingerprint, as "#rrggbb": the unknot is nearly
/// white, what has no name grey, and any other the paler the smaller the share.
std::string knot_colour(const fingerprint::ChainFingerprint& fingerprint, std::size_t knot, double share);

/// The knot with the greatest share among the stretches that begin at `first` or up to `side` - 1 beads later and
/// end at `last` or as much later; the unknot only where there is no other.
fingerprint::FingerprintMatrix::Cell strongest_cell(const fingerprint::ChainFingerprint& fingerprint,
                                                    std::size_t first, std::size_t last, std::size_t side);

/// The number of a place's knot.
std::size_t number_of(const fingerprint::KnotPlace& place, const fingerprint::ChainFingerprint& fingerprint);

/// The SVG text of the triangle of all stretches: across the first residue, upwards the last one, so that the
/// whole chain is at the upper left. The cores of the places are marked. Of a long chain every dot stands for
/// several stretches and shows the knot with the greatest share among them.
std::string matrix_picture(const fingerprint::ChainFingerprint& fingerprint,
                           const std::vector<fingerprint::KnotPlace>& places);

} // namespace loopwise::draw
