// The colours along a chain.
#pragma once

#include <string>

namespace loopwise {

/// The colour of a place along a chain, 0 for its first atom to 1 for its last, as "#rrggbb".
std::string colour_along(double place);

} // namespace loopwise
