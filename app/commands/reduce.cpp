// `loopwise reduce`: removes the beads that a chain's entanglement does not need.
#include "app/commands/command.hpp"
#include "app/commands/edit_chain.hpp"
#include "src/reduce/reduction.hpp"

namespace loopwise::app {

Action declare_reduce(CommandLine& line) {
    struct Arguments : ChainArguments {
        bool open = false;
    };
    const auto given = std::make_shared<Arguments>();
    declare(line, *given);
    line.flag("--open", given->open, "No segment joins the last atom to the first, and both stay");
    line.footer("Examples:\n  loopwise close chain.txt | loopwise reduce -o loop.pdb -");
    return [given] {
        given->tells_open_ends = !given->open;
        return edit_chain(*given, [&](Chain& chain) {
            reduce::reduce(chain, !given->open);
            return !given->open;
        });
    };
}

} // namespace loopwise::app
