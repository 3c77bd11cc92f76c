#include "app/commands/command.hpp"

#include <array>

namespace loopwise::app {

Action declare_survey(CommandLine& line);
Action declare_knot(CommandLine& line);
Action declare_fingerprint(CommandLine& line);
Action declare_close(CommandLine& line);
Action declare_reduce(CommandLine& line);
Action declare_check(CommandLine& line);

std::span<const Command> commands() {
    static constexpr std::array all{
        Command{"survey", "Close chains in many ways, reduce every loop and count what is left", declare_survey},
        Command{"knot", "Name the knot of closed polygons as they are", declare_knot},
        Command{"fingerprint", "Find the knot of every subchain, its core and slipknots", declare_fingerprint},
        Command{"close", "Close a chain into a loop", declare_close},
        Command{"reduce", "Remove the beads that the entanglement of a chain does not need", declare_reduce},
        Command{"check", "Look for gaps between neighbours", declare_check},
    };
    return all;
}

} // namespace loopwise::app
