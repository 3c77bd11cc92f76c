// Files that are there whole or not at all, and the user's wish to stop.
#pragma once

#include <stdexcept>
#include <string>

namespace loopwise {

/// Writes the text to a file beside the path and gives it the path's name when all of it is there. What is no
/// regular file, as a device or a pipe, is written to directly. Throws std::runtime_error.
void write_whole(const std::string& path, const std::string& text);

/// Thrown out of work that the user stopped.
struct Interrupted : std::runtime_error {
    Interrupted() : std::runtime_error("interrupted") {}
};

inline constexpr int exit_interrupted = 130; ///< as shells have it: 128 and SIGINT

/// From now on an interruption is only noted, the first time; a second one ends the program.
void note_interruptions();

/// Throws Interrupted once an interruption was noted. Any thread may ask.
void stop_if_interrupted();

} // namespace loopwise
