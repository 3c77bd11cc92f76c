#include "survey/survey.hpp"

#include "knots/knot.hpp"
#include "knots/links.hpp"
#include "src/closure/closures.hpp"
#include "src/reduce/reduction.hpp"
#include "survey/close.hpp"
#include "survey/closure_rng.hpp"
#include "survey/parallel.hpp"

#include <algorithm>
#include <stdexcept>

namespace loopwise::survey {
namespace {

/// So many closures of a thread wait at most to be counted, and so many beads where a thread has a few closures: few
/// enough for the memory to be used again while it is in the cache, enough to go on while closures are counted.
constexpr std::size_t fewest_held = 4, most_held = 64, most_held_beads = 1 << 14;

/// A closure from its making until it is counted. The memory of an earlier one is used again.
struct Outcome {
    bool closed = false;
    ClosureResult made;
};

/// What a thread works with.
struct Workspace {
    Structure loops, reduced;
    knots::KnotNamer namer;
};

closure::Closing close_structure(Structure& structure, const Plan& plan, std::size_t closure) {
    const closure::Draw draw = ClosureRng(plan.seed, closure);
    switch (plan.method) {
    case Method::directions:
        break;
    case Method::point:
        return closure::close_through_points(structure, plan.scale, draw);
    case Method::direction:
        return closure::close_in_random_directions(structure, draw);
    case Method::two_points:
        return closure::close_by_arcs(structure, plan.scale, draw);
    case Method::outside:
        return closure::close_outside(structure, plan.scale);
    case Method::ring:
        return closure::Closing::closed;
    }
    return closure::Closing::too_many_components;
}

void name_knots(const Structure& reduced, knots::KnotNamer& namer, ClosureResult& made) {
    made.knots.resize(reduced.size());
    for (std::size_t i = 0; i < reduced.size(); ++i) made.knots[i] = namer.name(reduced[i]).text();
    if (reduced.size() == 2) made.link = knots::link_of(reduced[0], reduced[1]).text();
    if (reduced.size() > 1 && reduced.size() <= most_linked_chains)
        made.linking =
            knots::linking_of(std::vector<std::span<const ChainAtom>>(reduced.begin(), reduced.end()))
                .numbers;
}

/// How many of the beads are the chain's own, which come first.
std::size_t own_beads(const Chain& loop, std::size_t beads_of_chain) {
    const auto appended = std::partition_point(loop.begin(), loop.end(), [&](const ChainAtom& bead) {
        return static_cast<std::size_t>(bead.id) < beads_of_chain;
    });
    return static_cast<std::size_t>(appended - loop.begin());
}

/// Closes, reduces and names in the memory of the outcome's and the bench's last closures.
void make(Outcome& outcome, const Structure& open, const Plan& plan, std::size_t closure,
          Workspace& workspace) {
    ClosureResult& made = outcome.made;
    made.closure = closure;
    made.closed.resize(open.size());
    made.reduced.resize(open.size());
    workspace.loops.resize(open.size());
    for (std::size_t i = 0; i < open.size(); ++i) workspace.loops[i].swap(made.closed[i].beads);
    workspace.loops = open;
    const closure::Closing closing = plan.together ? close_structure(workspace.loops, plan, closure)
                                                   : close_chain(workspace.loops.front(), plan, closure);
    outcome.closed = closing == closure::Closing::closed;
    if (!outcome.closed) return;
    // A closure numbers what it appends by rules of its own.
    for (Chain& loop : workspace.loops) polymer::number_by_position(loop);
    workspace.reduced = workspace.loops;
    if (plan.together)
        reduce::reduce(workspace.reduced, true);
    else
        reduce::reduce(workspace.reduced.front(), true);
    if (plan.name_knots) name_knots(workspace.reduced, workspace.namer, made);
    for (std::size_t i = 0; i < open.size(); ++i) {
        made.closed[i].beads.swap(workspace.loops[i]);
        made.closed[i].own = open[i].size();
        made.reduced[i].beads = workspace.reduced[i];
        made.reduced[i].own = own_beads(workspace.reduced[i], open[i].size());
    }
}

std::size_t total(const std::vector<Loop>& loops) {
    std::size_t beads = 0;
    for (const Loop& loop : loops) beads += loop.beads.size();
    return beads;
}

void count(std::vector<KnotCount>& knots, const std::string& knot) {
    const auto known =
        std::find_if(knots.begin(), knots.end(), [&](const KnotCount& k) { return k.knot == knot; });
    ++(known == knots.end() ? knots.emplace_back(KnotCount{knot, 0}) : *known).closures;
}

void count(ComponentTally& tally, const Loop& reduced, std::size_t closure) {
    const std::size_t left = reduced.beads.size();
    ++tally.left[left];
    if (left <= fully_reduced_beads)
        ++tally.fully_reduced;
    else if (!tally.smallest || left < tally.smallest->loop.beads.size())
        tally.smallest = {closure, reduced};
}

/// The result may take the specimen.
void count(Result& result, ClosureResult& made, Watcher& watcher) {
    for (std::size_t i = 0; i < made.reduced.size(); ++i)
        count(result.components[i], made.reduced[i], made.closure);
    for (std::size_t i = 0; i < made.knots.size(); ++i) count(result.components[i].knots, made.knots[i]);
    if (!made.link.empty()) count(result.whole.knots, made.link);
    for (std::size_t i = 0; i < made.linking.size(); ++i) ++result.pairs[i].numbers[made.linking[i]];
    watcher.closure_counted(made);

    ++result.whole.left[total(made.reduced)];
    const bool fully_reduced = std::all_of(made.reduced.begin(), made.reduced.end(), [](const Loop& loop) {
        return loop.beads.size() <= fully_reduced_beads;
    });
    if (fully_reduced) ++result.whole.fully_reduced;
    std::optional<ClosureResult>& best = fully_reduced ? result.first_fully_reduced : result.smallest;
    if (!best || (!fully_reduced && total(made.reduced) < total(best->reduced))) best = std::move(made);
}

void sort(std::vector<KnotCount>& knots) {
    std::sort(knots.begin(), knots.end(), [](const KnotCount& a, const KnotCount& b) {
        return a.closures != b.closures ? a.closures > b.closures : a.knot < b.knot;
    });
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
        if (!result.components.empty()) result.whole.name += '+';
        result.whole.name += named.name;
        result.whole.beads += tally.beads;
        result.components.push_back(std::move(tally));
    }
    if (plan.name_knots && result.components.size() > most_linked_chains)
        result.notes.push_back("linking numbers are for at most " + std::to_string(most_linked_chains) +
                               " chains");
    for (std::size_t i = 0; i < result.components.size(); ++i)
        for (std::size_t j = i + 1; j < result.components.size(); ++j)
            if (result.components.size() <= most_linked_chains) result.pairs.push_back({i, j, {}});
    return result;
}

void refuse_impossible(const polymer::Molecule& molecule, const Plan& plan) {
    const auto is_empty = [](const polymer::NamedChain& named) { return named.beads.empty(); };
    if (molecule.chains.empty() || std::any_of(molecule.chains.begin(), molecule.chains.end(), is_empty))
        throw std::invalid_argument("there is no bead to survey");
    if (plan.together && molecule.chains.size() > most_components(plan.method))
        throw std::invalid_argument("method " + std::string(name_of(plan.method)) + " closes at most " +
                                    std::to_string(most_components(plan.method)) + " chains together, not " +
                                    std::to_string(molecule.chains.size()));
    if (!plan.together && molecule.chains.size() > 1)
        throw std::invalid_argument("several chains are surveyed one by one or together");
    if (plan.method == Method::ring && plan.closures != 1)
        throw std::invalid_argument("a ring is reduced once, as it is");
    if (plan.method == Method::directions && plan.closures > closure::uniform_rows)
        throw std::invalid_argument("there are only " + std::to_string(closure::uniform_rows) +
                                    " directions");
}

} // namespace

std::string label_of(const Loop& loop, std::size_t bead, const ComponentTally& component) {
    const std::size_t position = loop.position(bead);
    if (position < component.residues.size()) return component.residues[position].text();
    return '+' + std::to_string(position - component.residues.size() + 1);
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
    if (rings == 0 || plan.method == Method::ring) return plan;
    const auto all = static_cast<std::ptrdiff_t>(molecule.chains.size());
    if (rings < all)
        throw std::invalid_argument("only " + std::to_string(rings) + " of " + std::to_string(all) +
                                    " chains are rings, the others open: they cannot be closed together");
    Plan as_it_is = plan;
    as_it_is.method = Method::ring;
    as_it_is.closures = 1;
    return as_it_is;
}

Result survey(const polymer::Molecule& given, const Plan& plan, Watcher& watcher) {
    refuse_impossible(given, plan);
    polymer::Molecule molecule = given;
    for (polymer::NamedChain& named : molecule.chains)
        if (plan.method == Method::ring && polymer::is_ring(named)) polymer::drop_repeated_end(named);
    Result result = empty_result(molecule, plan);
    Structure open;
    for (const polymer::NamedChain& named : molecule.chains) open.push_back(named.beads);

    const std::size_t threads = std::max(plan.threads, 1U);
    std::vector<Workspace> workspaces(threads);
    std::vector<Outcome> outcomes(
        std::min(plan.closures, std::clamp(most_held_beads / result.whole.beads, fewest_held * threads,
                                           most_held * threads)));
    in_parallel_and_in_order(
        plan.closures, plan.threads, outcomes.size(),
        [&](std::size_t closure, std::size_t place, std::size_t worker) {
            watcher.closure_at(closure, 0.0);
            make(outcomes[place], open, plan, closure, workspaces[worker]);
            watcher.closure_at(closure, 1.0);
        },
        [&](std::size_t, std::size_t place) {
            if (outcomes[place].closed)
                count(result, outcomes[place].made, watcher);
            else
                ++result.failed;
        });
    sort(result.whole.knots);
    for (ComponentTally& tally : result.components) sort(tally.knots);
    return result;
}

} // namespace loopwise::survey
