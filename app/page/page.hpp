// One HTML file that shows a chain in three dimensions and works without a network.
#pragma once

#include "survey/fingerprint.hpp"
#include "survey/survey.hpp"

namespace loopwise {

/// The matrix of all stretches beside the chain; a click on a stretch lights it and shows what a closure of it
/// that gives its knot comes down to. Makes those closures, of up to some five thousand stretches.
std::string fingerprint_page(const ChainFingerprint& fingerprint, const std::vector<KnotPlace>& places,
                             const Chain& beads);

/// The typical closure of a survey of single chains, and the table of its knots. The result must have one.
std::string survey_page(const Result& result);

} // namespace loopwise
