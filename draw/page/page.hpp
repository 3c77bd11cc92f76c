// One HTML file that shows a chain in three dimensions and works without a network.
#pragma once

#include "fingerprint/fingerprint.hpp"
#include "survey/survey.hpp"

namespace loopwise::draw {

/// The matrix of all stretches beside the chain; a click on a stretch lights it and shows what a closure of it
/// that gives its knot comes down to. Makes those closures, of up to some five thousand stretches.
std::string fingerprint_page(const fingerprint::ChainFingerprint& fingerprint,
                             const std::vector<fingerprint::KnotPlace>& places, const Chain& beads);

/// The typical closure of a survey of single chains, and the table of its knots. The result must have one.
std::string survey_page(const survey::Result& result);

} // namespace loopwise::draw
