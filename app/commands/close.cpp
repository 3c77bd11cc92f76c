// `loopwise close`: makes a loop of a chain.
#include "app/commands/command.hpp"
#include "app/commands/edit_chain.hpp"
#include "app/commands/methods.hpp"

#include <stdexcept>

namespace loopwise::app {
namespace {

struct Arguments : ChainArguments, MethodOptions {
    std::size_t closure = 0;
};

survey::Plan plan_of(const Arguments& given) {
    const survey::Method method = method_of(given);
    const survey::Plan plan = plan_of(given, method);
    if (!method->random && given.closure >= method->most_closures)
        refuse_usage("--closure must be below " + std::to_string(method->most_closures) + " for method " +
                     method->name);
    return plan;
}

const char* reason_of(closure::Closing closing) {
    switch (closing) {
    case closure::Closing::nothing_to_close: return "has no atom";
    case closure::Closing::no_arc: return "the centre and the ends span no plane: no arc closes it";
    case closure::Closing::no_direction: return "the ends lie where they give no direction";
    default: return "cannot be closed in this way";
    }
}

} // namespace

Action declare_close(CommandLine& line) {
    const auto given = std::make_shared<Arguments>();
    given->tells_gaps = true;
    declare(line, *given);
    declare_method(line, *given, "0");
    line.number<std::size_t>({"--closure", "N", "The number of the closure in a survey (default 0)"}, {0, SIZE_MAX},
                             given->closure);
    line.footer(methods_help(false));
    return [given] {
        const survey::Plan plan = plan_of(*given);
        return edit_chain(*given, [&](Chain& chain) {
            if (polymer::is_ring({"", chain, {}})) throw std::runtime_error("is a ring already");
            const closure::Closing closing = plan.method->close_chain(chain, input_of(plan, given->closure));
            if (closing != closure::Closing::closed) throw std::runtime_error(reason_of(closing));
            return true;
        });
    };
}

} // namespace loopwise::app
