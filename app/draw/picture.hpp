// A picture of one closure: the chain before and after its reduction.
#pragma once

#include "survey/survey.hpp"

#include <optional>
#include <string>

namespace loopwise {

/// The SVG text of the typical closure, seen along the view or, without one, along the clearest.
/// The result must have a typical closure.
std::string picture(const Result& result, std::optional<int> view);

} // namespace loopwise
