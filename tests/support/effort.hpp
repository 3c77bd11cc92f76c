// How much a test does: a sanitized or unoptimised build takes a part of the cases.
#pragma once

namespace effort {

#if defined(__has_feature)
#define LOOPWISE_HAS(feature) __has_feature(feature)
#else
#define LOOPWISE_HAS(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || LOOPWISE_HAS(address_sanitizer) ||      \
    LOOPWISE_HAS(thread_sanitizer)
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif
/// One case in so many.
constexpr int less = sanitized ? 10 : 1;

} // namespace effort
