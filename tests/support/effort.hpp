// How much a test does: a sanitized build takes one case in so many.
#pragma once

namespace effort {

#ifdef LOOPWISE_SANITIZED
constexpr int less = 10;
#else
constexpr int less = 1;
#endif
constexpr bool sanitized = less > 1;

} // namespace effort
