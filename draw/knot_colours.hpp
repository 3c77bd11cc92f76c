// The colours of knots.
#pragma once

#include "fingerprint/fingerprint.hpp"

namespace loopwise::draw {

/// A knot has a shade for each fifth of its share, the palest first.
inline constexpr std::size_t shades = 5;

/// The shade of a cell; 0 for what is no knot.
std::size_t shade_of(const fingerprint::ChainFingerprint& fingerprint, const fingerprint::Cell& cell);

/// The colour of a knot as "#rrggbb", by its number among those of the fingerprint: the unknot is nearly white, what
/// has no name is grey.
std::string knot_colour(const fingerprint::ChainFingerprint& fingerprint, std::size_t knot,
                        std::size_t shade = shades - 1);

/// The number of a place's knot.
std::size_t number_of(const fingerprint::KnotPlace& place, const fingerprint::ChainFingerprint& fingerprint);

/// What pictures and scripts call the core of a place: "core" for the chain's own knot, otherwise its kind.
std::string core_word(const fingerprint::KnotPlace& place);

} // namespace loopwise::draw
