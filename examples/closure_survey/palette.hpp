// The colours along a chain.
#ifndef CLOSURE_SURVEY_PALETTE_HPP
#define CLOSURE_SURVEY_PALETTE_HPP

#include <string>

/// The colour of a place along a chain, 0 for its first atom to 1 for its last, as "#rrggbb".
std::string colour_along(double place);

#endif
