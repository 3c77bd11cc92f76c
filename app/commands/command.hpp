// What the program can do: a file for each subcommand.
#pragma once

#include "app/command_line.hpp"

#include <functional>
#include <span>

namespace loopwise::app {

inline constexpr int exit_failure = 1; ///< a file, a chain or an output failed; the rest is done
inline constexpr int exit_usage = 2;

/// What a parsed command line asks for; returns the exit status.
using Action = std::function<int()>;

struct Command {
    const char* name;
    const char* summary;
    /// Gives the subcommand its arguments and returns what to run after they are parsed.
    Action (*declare)(CommandLine& line);
};

/// All of them, in the order of the help.
std::span<const Command> commands();

} // namespace loopwise::app
