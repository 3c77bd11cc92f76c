// `loopwise close`: makes a loop of a chain.
#include "survey/close.hpp"
#include "app/commands/operations.hpp"

#include <map>
#include <optional>
#include <stdexcept>

namespace loopwise::app {
namespace {

constexpr double default_point_scale = 10.0, default_arc_scale = 2.0;

const std::map<std::string, survey::Method> methods = {{"directions", survey::Method::directions},
                                                       {"point", survey::Method::point},
                                                       {"direction", survey::Method::direction},
                                                       {"two-points", survey::Method::two_points},
                                                       {"outside", survey::Method::outside}};

struct Arguments : ChainArguments {
    std::string method;
    std::optional<double> scale;
    std::size_t closure = 0;
    std::optional<std::uint64_t> seed;
};

survey::Plan plan_of(const Arguments& given) {
    survey::Plan plan;
    if (!given.method.empty()) plan.method = methods.at(given.method);
    if (given.scale && !survey::takes_scale(plan.method))
        refuse_usage(std::string("--scale: method ") + survey::name_of(plan.method) + " takes none");
    plan.scale =
        given.scale.value_or(plan.method == survey::Method::point ? default_point_scale : default_arc_scale);
    if (!(plan.scale > 1.0)) refuse_usage("--scale must be above 1");
    if (plan.method == survey::Method::directions && given.closure >= closure::uniform_rows)
        refuse_usage("--closure: method directions has the rows 0 to 399");
    if (plan.method == survey::Method::outside && given.closure > 0)
        refuse_usage("--closure: method outside has one closure, 0");
    if (given.seed && !survey::is_random(plan.method))
        refuse_usage(std::string("--seed: method ") + survey::name_of(plan.method) + " is not random");
    plan.seed = given.seed.value_or(0);
    return plan;
}

const char* words(closure::Closing closing) {
    switch (closing) {
    case closure::Closing::nothing_to_close:
        return "has no atom";
    case closure::Closing::no_arc:
        return "the centre and the ends span no plane: no arc closes it";
    case closure::Closing::no_direction:
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
        const survey::Plan plan = plan_of(*given);
        return edit_chain(*given, [&](Chain& chain) {
            if (polymer::is_ring({"", chain, {}})) throw std::runtime_error("is a ring already");
            const closure::Closing closing = survey::close_chain(chain, plan, given->closure);
            if (closing != closure::Closing::closed) throw std::runtime_error(words(closing));
            return true;
        });
    };
}

} // namespace loopwise::app
