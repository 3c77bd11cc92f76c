// A picture of one closure: the chain before and after its reduction.
#ifndef CLOSURE_SURVEY_PICTURE_HPP
#define CLOSURE_SURVEY_PICTURE_HPP

#include "survey.hpp"

#include <optional>
#include <string>

/// The SVG text of the typical closure, seen along the view or, without one, along the clearest.
/// The result must have a typical closure.
std::string picture(const Result& result, const Plan& plan, std::optional<int> view);

#endif
