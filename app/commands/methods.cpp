#include "app/commands/methods.hpp"

#include "words/numbers.hpp"

namespace loopwise::app {
namespace {

/// What the help adds to a method's line.
std::string defaults_of(const survey::MethodRow& row, bool with_structures) {
    const auto is = [&](survey::Method method) { return method->name == std::string_view(row.name); };
    std::string text;
    const auto add = [&](const std::string& more) { text.append(text.empty() ? " (" : "; ").append(more); };
    if (is(survey::Method::standard())) add("default");
    if (row.takes_scale()) add("--scale " + words::general(row.default_scale));
    if (with_structures && row.random)
        add(std::string("--structure: ") + (is(survey::Method::standard(true)) ? "default, " : "") + "up to " +
            std::to_string(row.most_components) + " chains");
    return text.empty() ? "" : text + ')';
}

} // namespace

void declare_method(CommandLine& line, MethodOptions& into, const char* default_seed) {
    line.text({"--method", "METHOD", "How to close, see below"}, into.method);
    line.value({"--scale", "X", "How far out (default: see below)"}, [&into](const std::string& text) {
        into.scale = decimal<double>(text);
        if (!into.scale || !survey::is_scale(*into.scale))
            refuse_usage("--scale: expected a number above 1, up to 1000000, not '" + text + "'");
    });
    line.number<std::uint64_t>({"--seed", "N", std::string("Seed of a random method (default: ") + default_seed + ")"},
                               {0, UINT64_MAX}, into.seed);
}

std::string methods_help(bool with_structures) {
    constexpr std::size_t column = 12;
    std::string help = "Methods:";
    for (const survey::MethodRow& row : survey::all_methods()) {
        if (!row.closes) continue;
        std::string name = row.name;
        name.resize(column, ' ');
        help.append("\n  ").append(name).append(row.help).append(defaults_of(row, with_structures));
    }
    return help;
}

survey::Method method_of(const MethodOptions& given, bool together) try {
    return given.method.empty() ? survey::Method::standard(together) : survey::Method::named(given.method);
} catch (const std::invalid_argument& unknown) {
    refuse_usage(std::string("--method: ") + unknown.what());
}

survey::Plan plan_of(const MethodOptions& given, survey::Method method) {
    const std::string name = std::string("method ") + method->name;
    if (given.seed && !method->random) refuse_usage("--seed: " + name + " is not random and uses no seed");
    if (given.scale && !method->takes_scale()) refuse_usage("--scale: " + name + " uses no scale");
    survey::Plan plan;
    plan.method = method;
    plan.closures = method->default_closures;
    plan.scale = given.scale.value_or(method->default_scale);
    plan.seed = given.seed.value_or(0);
    return plan;
}

} // namespace loopwise::app
