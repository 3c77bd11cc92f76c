// What the program can do, a file for each subcommand.
#pragma once

#include <CLI/CLI.hpp>

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
    /// Gives the subcommand its arguments and returns what to run once they are parsed. A command line
    /// that asks for what cannot be is refused by refuse_usage().
    Action (*declare)(CLI::App& command);
};

/// All of them, in the order of the help.
std::span<const Command> commands();

/// Ends the program as for a command line that does not parse.
[[noreturn]] void refuse_usage(const std::string& reason);

/// For an option with a number that has no sign: the parser would wrap a negative one around.
inline CLI::Validator not_negative() {
    return {[](std::string& value) { return value.starts_with('-') ? value + " is below 0" : ""; }, ""};
}

// The subcommands.
Action declare_knot(CLI::App& command);
Action declare_survey(CLI::App& command);
Action declare_fingerprint(CLI::App& command);
Action declare_close(CLI::App& command);
Action declare_reduce(CLI::App& command);
Action declare_check(CLI::App& command);

} // namespace loopwise::app
