// How long naming takes: cores as reductions leave them, whole closures, large tangles.
#include "knots/knot.hpp"
#include "knots/table.hpp"

#include <benchmark/benchmark.h>

#include <cmath>
#include <iostream>
#include <map>
#include <streambuf>

namespace {

/// Swallows the library's debug lines.
class Quiet : std::streambuf {
  public:
    Quiet() : before_(std::cout.rdbuf(this)) {}
    ~Quiet() override { std::cout.rdbuf(before_); }

  private:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streambuf* before_;
};

using Rings = std::vector<Chain>;

/// The shipped traces closed in all directions, or all reductions of these that keep so many beads.
Rings rings_of(int beads) {
    const Quiet quiet;
    Rings rings;
    for (std::string file : {"trefoil", "figure_eight", "unknot"}) {
        bool error = false;
        file = "examples/data/" + file + ".txt";
        const Chain open = ChainRead(file.data(), error);
        for (int row = 0; row < 400; ++row) {
            Chain ring = open;
            CloseChain_1direction_NoRandom(ring, row);
            if (beads > 0 && ChainReduce(ring, true) != beads) continue;
            rings.push_back(std::move(ring));
        }
    }
    return rings;
}

/// Closed curves on the integer lattice that fill a box: a square that grows one step out of itself at a time.
Chain lattice_tangle(int beads, int box) {
    using Place = std::array<int, 3>;
    std::vector<Place> ring{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    std::map<Place, bool> taken;
    for (const Place& p : ring) taken[p] = true;
    std::uint64_t state = 1;
    const auto draw = [&state](std::size_t below) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::size_t>(state >> 33) % below;
    };
    for (int tries = 0; tries < 1000000 && static_cast<int>(ring.size()) < beads; ++tries) {
        const std::size_t at = draw(ring.size()), axis = draw(3);
        Place a = ring[at], b = ring[(at + 1) % ring.size()];
        if (a[axis] != b[axis]) continue;
        const int step = draw(2) == 0 ? 1 : -1;
        a[axis] += step, b[axis] += step;
        if (a[axis] < 0 || a[axis] >= box || taken[a] || taken[b]) continue;
        taken[a] = taken[b] = true;
        ring.insert(ring.begin() + static_cast<std::ptrdiff_t>(at) + 1, {a, b});
    }
    Chain chain;
    for (const Place& p : ring)
        chain.push_back({1.0 * p[0], 1.0 * p[1], 1.0 * p[2], static_cast<int>(chain.size()) + 1});
    return chain;
}

void name(benchmark::State& state, const Rings& rings) {
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(loopwise::knots::knot_of(rings[i++ % rings.size()]));
    state.counters["rings"] = static_cast<double>(rings.size());
}

void name_with_memory(benchmark::State& state, const Rings& rings) {
    loopwise::knots::KnotNamer namer;
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(&namer.name(rings[i++ % rings.size()]));
}

void add(const std::string& what, Rings rings) {
    if (rings.empty()) return;
    benchmark::RegisterBenchmark(("name/" + what).c_str(), name, rings);
    benchmark::RegisterBenchmark(("name_with_memory/" + what).c_str(), name_with_memory, rings);
}

} // namespace

int main(int argc, char** argv) {
    for (int beads = 6; beads <= 12; ++beads) add("core_of_" + std::to_string(beads), rings_of(beads));
    add("whole_closure", rings_of(0));
    add("lattice_tangle_of_500", {lattice_tangle(500, 8)});
    add("lattice_tangle_of_900", {lattice_tangle(900, 10)});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
