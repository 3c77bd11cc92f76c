// `loopwise reduce`: takes the beads away that a chain's entanglement does not need.
#include "app/commands/operations.hpp"
#include "src/reduce/reduction.hpp"

namespace loopwise::app {

Action declare_reduce(CLI::App& app) {
    struct Arguments : ChainArguments {
        bool open = false;
    };
    const auto given = std::make_shared<Arguments>();
    declare(app, static_cast<ChainArguments&>(*given));
    app.add_flag("--open", given->open, "No segment joins the last atom to the first, and both stay");
    app.footer("Examples:\n  loopwise close chain.txt | loopwise reduce -o loop.pdb -");
    return [given] {
        given->tells_open_ends = !given->open;
        return edit_chain(*given, [&](Chain& chain) {
            reduce::reduce(chain, !given->open);
            return !given->open;
        });
    };
}

} // namespace loopwise::app
