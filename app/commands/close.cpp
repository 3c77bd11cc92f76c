// `loopwise close`: makes a loop of a chain.
#include "survey/close.hpp"
#include "commands/operations.hpp"

#include <map>
#include <optional>
#include <stdexcept>

namespace loopwise {
namespace {

constexpr double default_point_scale = 10.0, default_arc_scale = 2.0;

const std::map<std::string, Method> methods = {{"directions", Method::directions},
                                               {"point", Method::point},
                                               {"direction", Method::direction},
                                               {"two-points", Method::two_points},
                                               {"outside", Method::outside}};

struct Arguments : ChainArguments {
    std::string method;
    std::optional<double> scale;
    std::size_t closure = 0;
    std::optional<std::uint64_t> seed;
};

Plan plan_of(const Arguments& given) {
    Plan plan;
    if (!given.method.empty()) plan.method = methods.at(given.method);
    if (given.scale && !takes_scale(plan.method))
        refuse_usage(std::string("--scale: method ") + name_of(plan.method) + " takes none");
    plan.scale = given.scale.value_or(plan.method == Method::point ? default_point_scale : default_arc_scale);
    if (!(plan.scale > 1.0)) refuse_usage("--scale must be above 1");
    if (plan.method == Method::directions && given.closure >= uniform_rows)
        refuse_usage("--closure: method directions has the rows 0 to 399");
    if (plan.method == Method::outside && given.closure > 0)
        refuse_usage("--closure: method outside has one closure, 0");
    if (given.seed && !is_random(plan.method))
        refuse_usage(std::string("--seed: method ") + name_of(plan.method) + " is not random");
    plan.seed = given.seed.value_or(0);
    return plan;
}

const char* words(Closing closing) {
    switch (closing) {
    case Closing::nothing_to_close:
        return "has no atom";
    case Closing::no_arc:
        return "the centre and the ends span no plane: no arc closes it";
    case Closing::no_direction:
        return "the ends lie where they give no direction";
    default:
        return "cannot be closed in this way";
    }
}

} // namespace

Action declare_close(CLI::App& app) {
    const auto given = std::make_shared<Arguments>();
    given->tells_gaps = true;
    declare(app, static_cast<ChainArguments&>(*given));
    app.add_option("--method", given->method,
                   "directions (default), direction, point, two-points or outside: see survey")
        ->check(CLI::IsMember(&methods))
        ->option_text("METHOD");
    app.add_option("--closure", given->closure,
                   "Which closure of a survey: the row for directions (default 0)")
        ->check(not_negative())
        ->option_text("N");
    app.add_option("--scale", given->scale, "How far out (default 10 for point, 2 for arcs)")
        ->option_text("X");
    app.add_option("--seed", given->seed, "Seed of a random method (default 0)")
        ->check(not_negative())
        ->option_text("N");
    return [given] {
        const Plan plan = plan_of(*given);
        return edit_chain(*given, [&](Chain& chain) {
            if (is_ring({"", chain, {}})) throw std::runtime_error("is a ring already");
            const Closing closing = close_chain(chain, plan, given->closure);
            if (closing != Closing::closed) throw std::runtime_error(words(closing));
            return true;
        });
    };
}

} // namespace loopwise
