#include "survey.hpp"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <future>
#include <numeric>

namespace {

/// So many loops are held at once: few enough for the memory to be used again while it is in the cache.
constexpr std::size_t batch_size = 64;

struct Outcome {
    bool closed = false;
    Structure loops;
    Structure reduced;
};

bool close_chain(Chain& chain, const Plan& plan, std::size_t closure) {
    switch (plan.method) {
    case Method::directions:
        return CloseChain_1direction_NoRandom(chain, static_cast<int>(closure)) == 0;
    case Method::point:
        return CloseChain_1point(chain, plan.scale) == 0;
    case Method::direction:
        return CloseChain_1direction(chain) == 0;
    case Method::two_points:
        return CloseChain_2points(chain, plan.scale) == 0;
    case Method::outside:
        return CloseChain_OUT(chain, plan.scale) == 0;
    }
    return false;
}

bool close_structure(Structure& structure, const Plan& plan) {
    switch (plan.method) {
    case Method::directions:
        return false; // the library has no such closure of a structure
    case Method::point:
        return CloseChains_1point(structure, plan.scale) == 0;
    case Method::direction:
        return CloseChains_1direction(structure) == 0;
    case Method::two_points:
        return CloseChains_2points(structure, plan.scale) == 0;
    case Method::outside:
        return CloseChains_OUT(structure, plan.scale) == 0;
    }
    return false;
}

Outcome close(const Structure& open, const Plan& plan, std::size_t closure) {
    Outcome outcome{false, open, {}};
    outcome.closed = plan.together ? close_structure(outcome.loops, plan)
                                   : close_chain(outcome.loops.front(), plan, closure);
    return outcome;
}

void reduce(Outcome& outcome, const Plan& plan) {
    if (!outcome.closed) return;
    outcome.reduced = outcome.loops;
    if (plan.together)
        ChainsReduce(outcome.reduced, true);
    else
        ChainReduce(outcome.reduced.front(), true);
}

/// Runs body(0) to body(count - 1), each on one of the threads. An exception of one reaches the caller.
template <typename Body> void in_parallel(std::size_t count, unsigned threads, const Body& body) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < count; i = next++) body(i);
    };
    const std::size_t others = std::min<std::size_t>(threads, count) - 1;
    std::vector<std::future<void>> running;
    for (std::size_t i = 0; i < others; ++i) running.push_back(std::async(std::launch::async, work));
    work();
    for (std::future<void>& thread : running) thread.get();
}

/// Closes and reduces. Random closures share std::rand(): they are drawn in order, by one thread.
std::vector<Outcome> outcomes(const Structure& open, const Plan& plan, std::size_t first, std::size_t count,
                              Progress& progress) {
    std::vector<Outcome> batch(count);
    const bool random = is_random(plan.method);
    if (random)
        for (std::size_t i = 0; i < count; ++i) batch[i] = close(open, plan, first + i);
    in_parallel(count, plan.threads, [&](std::size_t i) {
        if (!random) batch[i] = close(open, plan, first + i);
        reduce(batch[i], plan);
        progress.advance();
    });
    return batch;
}

bool same(const ChainAtom& a, const ChainAtom& b) {
    return a.id == b.id && a.x == b.x && a.y == b.y && a.z == b.z;
}

/// A loop after its reduction, which kept the order and the records of its atoms.
Loop find_places(Chain reduced, const Chain& loop, std::size_t own) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < own && places.size() < reduced.size(); ++i)
        if (same(loop[i], reduced[places.size()])) places.push_back(i);
    return {std::move(reduced), std::move(places)};
}

void count(ComponentTally& tally, const Loop& reduced, std::size_t closure) {
    const std::size_t left = reduced.atoms.size();
    ++tally.left[left];
    if (left <= bare_loop)
        ++tally.bare;
    else if (!tally.smallest || left < tally.smallest->loop.atoms.size())
        tally.smallest = {closure, reduced};
}

std::size_t total(const std::vector<Loop>& loops) {
    std::size_t atoms = 0;
    for (const Loop& loop : loops) atoms += loop.atoms.size();
    return atoms;
}

Specimen specimen_of(Outcome& outcome, const Result& result, std::size_t closure) {
    Specimen specimen{closure, {}, {}};
    for (std::size_t i = 0; i < outcome.loops.size(); ++i) {
        Chain& loop = outcome.loops[i];
        const std::size_t own = result.components[i].beads;
        specimen.reduced.push_back(find_places(std::move(outcome.reduced[i]), loop, own));
        specimen.closed.push_back({std::move(loop), std::vector<std::size_t>(own)});
        std::iota(specimen.closed.back().places.begin(), specimen.closed.back().places.end(), 0U);
    }
    return specimen;
}

void count(Result& result, Outcome& outcome, std::size_t closure) {
    if (!outcome.closed) {
        ++result.failed;
        return;
    }
    Specimen specimen = specimen_of(outcome, result, closure);
    for (std::size_t i = 0; i < specimen.reduced.size(); ++i)
        count(result.components[i], specimen.reduced[i], closure);

    ++result.whole.left[total(specimen.reduced)];
    const bool bare = std::all_of(specimen.reduced.begin(), specimen.reduced.end(),
                                  [](const Loop& loop) { return loop.atoms.size() <= bare_loop; });
    if (bare) ++result.whole.bare;
    std::optional<Specimen>& best = bare ? result.first_bare : result.smallest_core;
    if (!best || (!bare && total(specimen.reduced) < total(best->reduced))) best = std::move(specimen);
}

Result empty_result(const Molecule& molecule) {
    Result result;
    result.file = molecule.file;
    for (const NamedChain& named : molecule.chains) {
        ComponentTally tally;
        tally.name = named.name;
        tally.beads = named.chain.size();
        tally.breaks = CheckDistancesBetweenAtoms(named.chain);
        if (!result.components.empty()) result.whole.name += '+';
        result.whole.name += named.name;
        result.whole.beads += tally.beads;
        result.components.push_back(std::move(tally));
    }
    return result;
}

} // namespace

const char* name_of(Method method) {
    switch (method) {
    case Method::directions:
        return "directions";
    case Method::point:
        return "point";
    case Method::direction:
        return "direction";
    case Method::two_points:
        return "two-points";
    case Method::outside:
        return "outside";
    }
    return "";
}

bool is_random(Method method) {
    return method == Method::point || method == Method::direction || method == Method::two_points;
}

bool takes_scale(Method method) {
    return method == Method::point || method == Method::two_points || method == Method::outside;
}

std::size_t Result::counted() const {
    std::size_t closures = 0;
    for (const auto& [beads, times] : whole.left) closures += times;
    return closures;
}

const Specimen* Result::typical() const {
    if (first_bare && 2 * whole.bare >= counted()) return &*first_bare;
    return smallest_core ? &*smallest_core : nullptr;
}

Result survey(const Molecule& molecule, const Plan& plan, Progress& progress) {
    Result result = empty_result(molecule);
    Structure open;
    for (const NamedChain& named : molecule.chains) open.push_back(named.chain);

    FillFulerenData();
    std::srand(plan.seed);
    for (std::size_t first = 0; first < plan.closures; first += batch_size) {
        const std::size_t size = std::min(batch_size, plan.closures - first);
        std::vector<Outcome> batch = outcomes(open, plan, first, size, progress);
        for (std::size_t i = 0; i < size; ++i) count(result, batch[i], first + i);
    }
    return result;
}
