#include "commands/command.hpp"

#include <array>

namespace loopwise {

std::span<const Command> commands() {
    static constexpr std::array all{
        Command{"survey", "Close chains in many ways, reduce every loop and count what is left",
                declare_survey},
        Command{"fingerprint", "Find the knot of every stretch of a chain, its core and slipknots",
                declare_fingerprint},
    };
    return all;
}

void refuse_usage(const std::string& reason) { throw CLI::ValidationError(reason, exit_usage); }

} // namespace loopwise
