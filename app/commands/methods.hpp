// The options that say how chains are closed; `survey` and `close` have them.
#pragma once

#include "app/command_line.hpp"
#include "survey/plan.hpp"

namespace loopwise::app {

struct MethodOptions {
    std::string method;
    std::optional<double> scale;
    std::optional<std::uint64_t> seed;
};

void declare_method(CommandLine& line, MethodOptions& into, const char* default_seed);

/// The table of methods, for the end of the help; with the defaults and limits of structures where these can be closed.
std::string methods_help(bool with_structures);

/// The method with the name given, or the default.
survey::Method method_of(const MethodOptions& given, bool together = false);

/// The plan with this method; its seed is 0 where none is given. Refuses a command line with options that the method
/// does not take.
survey::Plan plan_of(const MethodOptions& given, survey::Method method);

} // namespace loopwise::app
