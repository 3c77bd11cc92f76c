#include "survey/survey.hpp"

#include "survey/parallel.hpp"

#include <algorithm>
#include <stdexcept>

namespace loopwise::survey {
namespace {

/// Closures of a thread that may wait to be counted, and the beads that these may have together. Few enough for their
/// memory to be used again while it is in the cache; enough to go on while closures are counted.
constexpr std::size_t fewest_held = 4, most_held = 64, most_held_beads = 1 << 14;

/// A closure between its making and its counting. The memory of an earlier one is used again.
struct Outcome {
    bool closed = false;
    ClosureResult result;
};

std::size_t total(const std::vector<Loop>& loops) {
    std::size_t beads = 0;
    for (const Loop& loop : loops) beads += loop.beads.size();
    return beads;
}

void count(ComponentTally& tally, const Loop& reduced, std::size_t closure) {
    const std::size_t left = reduced.beads.size();
    ++tally.left[left];
    if (left <= fully_reduced_beads)
        ++tally.fully_reduced;
    else if (!tally.smallest || left < tally.smallest->loop.beads.size())
        tally.smallest = {closure, reduced};
}

/// May move the closure's result into the survey's.
void count(Result& result, ClosureResult& made, Watcher& watcher) {
    for (std::size_t i = 0; i < made.reduced.size(); ++i) count(result.components[i], made.reduced[i], made.closure);
    for (std::size_t i = 0; i < made.knots.size(); ++i) count(result.components[i].knots, made.knots[i]);
    if (made.linking) {
        count(result.whole.knots, made.linking->all);
        for (std::size_t i = 0; i < made.linking->pairs.size(); ++i) {
            count(result.pairs[i].knots, made.linking->pairs[i]);
            ++result.pairs[i].numbers[made.linking->numbers[i]];
        }
    }
    watcher.closure_counted(made);

    ++result.whole.left[total(made.reduced)];
    const bool fully_reduced = std::all_of(made.reduced.begin(), made.reduced.end(),
                                           [](const Loop& loop) { return loop.beads.size() <= fully_reduced_beads; });
    if (fully_reduced) ++result.whole.fully_reduced;
    std::optional<ClosureResult>& best = fully_reduced ? result.first_fully_reduced : result.smallest;
    if (!best || (!fully_reduced && total(made.reduced) < total(best->reduced))) best = std::move(made);
}

PairTally pair_of(const Result& result, std::size_t one, std::size_t other) {
    PairTally pair;
    pair.one = one;
    pair.other = other;
    const ComponentTally &a = result.components[one], &b = result.components[other];
    pair.name = a.name + '+' + b.name;
    pair.beads = a.beads + b.beads;
    return pair;
}

Result empty_result(const polymer::Molecule& molecule, const Plan& plan) {
    Result result;
    result.file = molecule.file;
    result.model = molecule.model;
    result.notes = molecule.notes;
    result.plan = plan;
    for (const polymer::NamedChain& named : molecule.chains) {
        ComponentTally tally;
        tally.name = named.name;
        tally.beads = named.beads.size();
        tally.bonds = polymer::bonds_of(named);
        tally.kind = named.kind;
        tally.residues = named.residues;
        tally.notes = named.notes;
        tally.confidence = polymer::confidence_of(named.confidence);
        if (!result.components.empty()) result.whole.name += '+';
        result.whole.name += named.name;
        result.whole.beads += tally.beads;
        result.components.push_back(std::move(tally));
    }
    if (plan.name_knots && result.components.size() > most_linked_chains)
        result.notes.push_back("links are named for at most " + std::to_string(most_linked_chains) + " chains");
    for (std::size_t i = 0; i < result.components.size(); ++i)
        for (std::size_t j = i + 1; j < result.components.size(); ++j)
            if (plan.name_knots && result.components.size() <= most_linked_chains)
                result.pairs.push_back(pair_of(result, i, j));
    return result;
}

void refuse_impossible(const polymer::Molecule& molecule, const Plan& plan) {
    const std::size_t chains = molecule.chains.size(), most = plan.method->most_components;
    const std::string method = "method " + std::string(plan.method->name);
    const auto is_empty = [](const polymer::NamedChain& named) { return named.beads.empty(); };
    if (chains == 0 || std::any_of(molecule.chains.begin(), molecule.chains.end(), is_empty))
        throw std::invalid_argument("there is no bead to survey");
    if (plan.together && chains > most)
        throw std::invalid_argument(method + " closes at most " + std::to_string(most) + " chains together, not " +
                                    std::to_string(chains));
    if (!plan.together && chains > 1) throw std::invalid_argument("several chains are surveyed one by one or together");
    if (plan.closures > plan.method->most_closures)
        throw std::invalid_argument(method + " has at most " + std::to_string(plan.method->most_closures) +
                                    " closures, not " + std::to_string(plan.closures));
}

} // namespace

std::string label_of(const Loop& loop, std::size_t bead, const ComponentTally& component) {
    const std::size_t position = index_of(loop.position(bead)), own = component.residues.size();
    return position < own ? component.residues[position].text() : '+' + std::to_string(position - own + 1);
}

bool PairTally::is_linked() const {
    return std::any_of(knots.begin(), knots.end(), [](const KnotCount& count) { return !count.knot.comes_apart(); });
}

std::size_t Result::counted() const {
    std::size_t closures = 0;
    for (const auto& [beads, times] : whole.left) closures += times;
    return closures;
}

const ClosureResult* Result::typical() const {
    if (first_fully_reduced && 2 * whole.fully_reduced >= counted()) return &*first_fully_reduced;
    return smallest ? &*smallest : nullptr;
}

Plan plan_for(const polymer::Molecule& molecule, const Plan& plan) {
    const auto rings = std::count_if(molecule.chains.begin(), molecule.chains.end(), polymer::is_ring);
    if (rings == 0 || !plan.method->closes) return plan;
    const auto all = static_cast<std::ptrdiff_t>(molecule.chains.size());
    if (rings < all)
        throw std::invalid_argument("only " + std::to_string(rings) + " of " + std::to_string(all) +
                                    " chains are rings, the others open: they cannot be closed together");
    Plan as_it_is = plan;
    as_it_is.method = Method::ring();
    as_it_is.closures = as_it_is.method->default_closures;
    return as_it_is;
}

Result survey(const polymer::Molecule& given, const Plan& plan, Watcher& watcher) {
    refuse_impossible(given, plan);
    polymer::Molecule molecule = given;
    for (polymer::NamedChain& named : molecule.chains)
        if (!plan.method->closes && polymer::is_ring(named)) polymer::drop_repeated_end(named);
    Result result = empty_result(molecule, plan);
    Structure open;
    for (const polymer::NamedChain& named : molecule.chains) open.push_back(named.beads);

    const std::size_t threads = std::max(plan.threads, 1U);
    std::vector<Workspace> workspaces(threads);
    std::vector<Outcome> outcomes(std::min(
        plan.closures, std::clamp(most_held_beads / result.whole.beads, fewest_held * threads, most_held * threads)));
    produce_and_consume(
        plan.closures, plan.threads, outcomes.size(),
        [&](std::size_t closure, std::size_t slot, std::size_t worker) {
            watcher.closure_at(closure, 0.0);
            Outcome& outcome = outcomes[slot];
            outcome.closed = close_reduce_name(open, plan, closure, workspaces[worker], outcome.result);
            watcher.closure_at(closure, 1.0);
        },
        [&](std::size_t, std::size_t slot) {
            if (outcomes[slot].closed)
                count(result, outcomes[slot].result, watcher);
            else
                ++result.failed;
        });
    sort(result.whole.knots);
    for (PairTally& pair : result.pairs) sort(pair.knots);
    for (std::size_t i = 0; i < result.components.size(); ++i) {
        ComponentTally& tally = result.components[i];
        sort(tally.knots);
        if (!plan.judge_gaps || tally.knots.empty() || tally.bonds.gaps.empty()) continue;
        tally.verdict = judge_gaps(molecule.chains[i], tally.bonds, tally.knots.front().knot,
                                   {.is_ring = !plan.method->closes, .threads = plan.threads},
                                   [&watcher] { watcher.path_begins(); });
    }
    return result;
}

} // namespace loopwise::survey
