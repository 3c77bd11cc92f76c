// One HTML file that shows a chain in three dimensions and works without a network.
#pragma once

#include "draw/matrix_picture.hpp"
#include "fingerprint/typical.hpp"
#include "survey/survey.hpp"

namespace loopwise::draw {

/// The matrix picture beside the chain. A click on a subchain lights it and shows the nearest of the typical closures,
/// of which the first is shown where no place has a core.
std::string fingerprint_page(const fingerprint::ChainFingerprint& fingerprint,
                             const std::vector<fingerprint::KnotPlace>& places, const Chain& beads,
                             const std::vector<fingerprint::TypicalClosure>& closures);

/// The typical closure of a survey of single chains, and the table of its knots. The result must have one.
std::string survey_page(const survey::Result& result);

} // namespace loopwise::draw
