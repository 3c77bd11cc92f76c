#include "commands/command.hpp"

#include <algorithm>
#include <array>
#include <iostream>

namespace loopwise {

std::span<const Command> commands() {
    static constexpr std::array all{
        Command{"survey", "Close chains in many ways, reduce every loop and count what is left",
                declare_survey},
        Command{"knot", "Name the knot of closed polygons as they are", declare_knot},
    };
    return all;
}

bool attempt(const std::string& what, const std::function<bool()>& work) {
    try {
        return work();
    } catch (const std::exception& failure) {
        // Some parsers start with the name of the file or use several lines.
        std::string reason = failure.what();
        std::replace(reason.begin(), reason.end(), '\n', ' ');
        std::cerr << "loopwise: " << (reason.starts_with(what) ? "" : what + ": ") << reason << '\n';
    }
    return false;
}

int finish_output(bool good) {
    if (std::cout.flush()) return good ? 0 : exit_failure;
    std::cerr << "loopwise: standard output: cannot be written\n";
    return exit_failure;
}

void refuse_usage(const std::string& reason) { throw CLI::ValidationError(reason, exit_usage); }

} // namespace loopwise
