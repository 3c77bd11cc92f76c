#include "app/commands/command.hpp"

#include <array>

namespace loopwise::app {

std::span<const Command> commands() {
    static constexpr std::array all{
        Command{"survey", "Close chains in many ways, reduce every loop and count what is left",
                declare_survey},
        Command{"knot", "Name the knot of closed polygons as they are", declare_knot},
        Command{"fingerprint", "Find the knot of every subchain of a chain, cores and slipknots",
                declare_fingerprint},
        Command{"close", "Make a loop of a chain", declare_close},
        Command{"reduce", "Take away the beads that a chain's entanglement does not need", declare_reduce},
        Command{"check", "Look for breaks between neighbours", declare_check},
    };
    return all;
}

void refuse_usage(const std::string& reason) { throw CLI::ValidationError(reason, exit_usage); }

} // namespace loopwise::app
