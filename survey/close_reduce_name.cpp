#include "survey/close_reduce_name.hpp"

#include "knots/links.hpp"
#include "polymer/molecule.hpp"
#include "src/reduce/reduction.hpp"
#include "survey/closure_rng.hpp"

namespace loopwise::survey {
namespace {

void name(const Structure& reduced, knots::KnotNamer& namer, ClosureResult& result) {
    result.knots.resize(reduced.size());
    for (std::size_t i = 0; i < reduced.size(); ++i) result.knots[i] = namer.name(reduced[i]).type;
    if (reduced.size() > 1 && reduced.size() <= most_linked_chains)
        result.linking = knots::linking_of(std::vector<std::span<const ChainAtom>>(reduced.begin(), reduced.end()));
}

} // namespace

ClosureInput input_of(const Plan& plan, std::size_t closure) {
    return {closure, plan.scale, ClosureRng(plan.seed, closure)};
}

bool close_reduce_name(std::span<const Chain> open, const Plan& plan, std::size_t closure, Workspace& workspace,
                       ClosureResult& result, std::optional<double> diameter) {
    const std::size_t count = open.size();
    auto& [closed, reduced, namer] = workspace;
    result.closure = closure;
    result.closed.resize(count);
    result.reduced.resize(count);
    closed.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        closed[i].swap(result.closed[i].beads);
        closed[i] = open[i];
    }
    ClosureInput input = input_of(plan, closure);
    input.diameter = diameter;
    const closure::Closing closing =
        plan.together ? plan.method->close_structure(closed, input) : plan.method->close_chain(closed.front(), input);
    if (closing != closure::Closing::closed) return false;
    // A closure numbers what it appends by rules of its own.
    for (Chain& loop : closed) polymer::number_by_position(loop);
    reduced = closed;
    if (plan.together)
        reduce::reduce(reduced, true);
    else
        reduce::reduce(reduced.front(), true);
    if (plan.name_knots) name(reduced, namer, result);
    for (std::size_t i = 0; i < count; ++i) {
        result.closed[i].beads.swap(closed[i]);
        result.closed[i].own = open[i].size();
        result.reduced[i].beads = reduced[i];
        result.reduced[i].own = own_beads(reduced[i], open[i].size());
    }
    return true;
}

} // namespace loopwise::survey
