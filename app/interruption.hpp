// The user's wish to stop.
#pragma once

#include <stdexcept>

namespace loopwise::app {

/// Thrown out of work that the user stopped.
struct Interrupted : std::runtime_error {
    Interrupted() : std::runtime_error("interrupted") {}
};

inline constexpr int exit_interrupted = 130; ///< as shells have it: 128 and SIGINT

/// From now on an interruption ends the program at once, with exit_interrupted.
void exit_when_interrupted();

/// From now on the first interruption is only noted, for work that asks; a second one ends the program.
void note_interruptions();

/// Throws Interrupted once an interruption was noted. Any thread may ask.
void stop_if_interrupted();

} // namespace loopwise::app
