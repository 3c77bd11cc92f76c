// How much a test does: a sanitized build takes a part of the cases.
#pragma once

namespace effort {

constexpr bool sanitized = LOOPWISE_SANITIZED;
/// One case in so many.
constexpr int less = sanitized ? 10 : 1;

} // namespace effort
