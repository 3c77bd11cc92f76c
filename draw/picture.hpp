// Pictures of one closure, the chain before and after its reduction, and of a chain by itself.
#pragma once

#include "survey/survey.hpp"

#include <optional>
#include <string>

namespace loopwise::draw {

/// The SVG text of the typical closure, seen along the view or, without one, along the clearest.
/// The result must have a typical closure.
std::string picture(const survey::Result& result, std::optional<int> view);

/// The SVG text of a chain as it is, seen along the view with the fewest crossings. It must have a bead besides the one
/// that a ring repeats.
std::string picture(const polymer::NamedChain& chain);

} // namespace loopwise::draw
