// Every operation that was made fast, beside its plain version, in one run. Where both are measured the
// results are compared first. Run it from the repository's root; --smoke leaves out the long ones.
#include "libloopwise.h"
#include "src/closure/point_tables.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>
#include <set>
#include <string>

namespace {

using chains::Kind;

/// The copy of the start value counts for both versions.
template <class Value, class Operation> void measure(benchmark::State& state, const Value& start, Operation operation) {
    for ([[maybe_unused]] auto _ : state) {
        Value value = start;
        benchmark::DoNotOptimize(operation(value));
    }
}

/// Collects the shortest time of each version and prints them side by side.
class Table : public benchmark::BenchmarkReporter {
  public:
    explicit Table(std::ostream& out) : out_(out) {}
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            const std::string name = run.run_name.function_name;
            const std::size_t cut = name.rfind('/');
            Row& row = rows_[name.substr(0, cut)];
            double& best = name.substr(cut) == "/plain" ? row.plain : row.ours;
            best = std::min(best, run.GetAdjustedCPUTime());
        }
    }
    void Finalize() override {
        out_ << "| work | plain, us | ours, us | ratio |\n|---|---|---|---|\n";
        for (const auto& [name, row] : rows_) {
            out_ << "| " << name << " | ";
            if (row.plain < unmeasured) out_ << row.plain;
            out_ << " | " << row.ours << " | ";
            if (row.plain < unmeasured) out_ << row.plain / row.ours;
            out_ << " |\n";
        }
        out_.flush();
    }

  private:
    static constexpr double unmeasured = 1e300;
    struct Row {
        double plain = unmeasured, ours = unmeasured;
    };
    std::ostream& out_;
    std::map<std::string, Row> rows_;
};

/// One row of the table: the plain version, which is left out where it takes too long, and ours.
template <class Value, class Plain, class Ours, class Same>
void add(const std::string& name, const Value& start, Plain plain, Ours ours, Same same, bool with_plain = true) {
    if (with_plain) {
        Value a = start, b = start;
        const auto left = plain(a);
        const auto right = ours(b);
        if (left != right || !same(a, b)) {
            std::cerr << name << ": the result differs from that of the plain version\n";
            std::exit(1);
        }
        benchmark::RegisterBenchmark((name + "/plain").c_str(), [=](benchmark::State& s) {
            measure(s, start, plain);
        })->Unit(benchmark::kMicrosecond);
    }
    benchmark::RegisterBenchmark((name + "/ours").c_str(), [=](benchmark::State& s) {
        measure(s, start, ours);
    })->Unit(benchmark::kMicrosecond);
}

bool same_structure(const Structure& a, const Structure& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), chains::same_bits);
}

void add_reduction(const std::string& name, const Chain& chain, bool closed, bool with_plain) {
    add(
        "ChainReduce/" + name, chain, [closed](Chain& c) { return literal::reduce(c, closed); },
        [closed](Chain& c) { return ChainReduce(c, closed); }, chains::same_bits, with_plain);
}

void add_reductions(bool smoke) {
    const auto chain = [](Kind kind, int length) {
        chains::Random random(7);
        return chains::make(kind, length, random);
    };
    for (const int length : {200, 800, 3200})
        for (const bool closed : {false, true})
            if (!smoke || length == 200)
                add_reduction(std::string("compact_") + (closed ? "closed/" : "open/") + std::to_string(length),
                              chain(Kind::compact, length), closed, true);
    for (const int length : {1000, 2000, 8000})
        if (!smoke)
            add_reduction("compact_closed/" + std::to_string(length), chain(Kind::compact, length), true,
                          length < 8000);
    for (const int length : {200, 800}) {
        add_reduction("tangle/" + std::to_string(length), chain(Kind::tangle, length), false, true);
        add_reduction("lattice/" + std::to_string(length), chain(Kind::lattice, length), false, true);
    }

    chains::Random random(7);
    Structure entangled(6);
    for (Chain& component : entangled) component = chains::make(Kind::compact, 200, random);
    if (!smoke)
        add(
            "ChainsReduce/6x200", entangled, [](Structure& s) { return literal::reduce(s, false); },
            [](Structure& s) { return ChainsReduce(s, false); }, same_structure);
}

/// All 400 closures by direction of a chain of a file, each reduced as a loop.
void add_survey(const char* name) {
    bool error = false;
    std::string file = name;
    const Chain chain = ChainRead(file.data(), error);
    if (chain.empty()) return;
    const auto survey = [](auto reduce) {
        return [reduce](const Chain& open) {
            int left = 0;
            for (int row = 0; row < 400; ++row) {
                Chain loop = open;
                CloseChain_1direction_NoRandom(loop, row);
                left += reduce(loop, true);
            }
            return left;
        };
    };
    add("directions/" + file.substr(file.rfind('/') + 1), chain,
        survey([](Chain& c, bool closed) { return literal::reduce(c, closed); }),
        survey([](Chain& c, bool closed) { return ChainReduce(c, closed); }), chains::same_bits);
}

/// CloseChains_1direction() as it is described, with a whole diameter for every component.
int close_in_directions(Structure& structure) {
    std::set<int> used;
    for (Chain& chain : structure) {
        int row = std::rand() % loopwise::closure::uniform_rows;
        while (!used.insert(row).second) row = std::rand() % loopwise::closure::uniform_rows;
        const auto [x, y, z] = loopwise::closure::uniform_directions[static_cast<std::size_t>(row)];
        const double shift = 1.02 * literal::diameter(structure), size = std::sqrt(x * x + y * y + z * z);
        for (ChainAtom end : {chain.back(), chain.front()}) {
            end.x += x * shift / size, end.y += y * shift / size, end.z += z * shift / size;
            end.id = chain.back().id + 1;
            chain.push_back(end);
        }
    }
    return 0;
}

void add_measures(bool smoke) {
    const auto diameter = [](const Structure& s) { return DiameterOfStructure(s); };
    chains::Random random(7);
    add("Diameter/compact/1000", Structure{chains::make(Kind::compact, 1000, random)}, literal::diameter, diameter,
        same_structure);
    add("Diameter/sphere/4000", Structure{chains::on_sphere(4000, random)}, literal::diameter, diameter,
        same_structure);

    Structure structure(smoke ? 4 : 40);
    for (Chain& component : structure) component = chains::make(Kind::compact, 200, random);
    const auto seeded = [](auto close) {
        return [close](Structure& s) {
            std::srand(1);
            return close(s);
        };
    };
    add("CloseChains_1direction/40x200", structure, seeded(close_in_directions), seeded(CloseChains_1direction),
        same_structure);
}

void add_texts() {
    chains::Random random(7);
    Chain chain = chains::make(Kind::compact, 2000, random);
    for (ChainAtom& atom : chain) // three decimals, as in a structure file
        for (double* c : {&atom.x, &atom.y, &atom.z}) *c = static_cast<double>(static_cast<long>(*c * 1000)) / 1000;
    bool error = false;
    const auto size_of = [](auto read) {
        return [read](const std::string& t) {
            bool failed = false;
            return read(t, failed).size();
        };
    };
    const auto same = [](const auto&, const auto&) { return true; };
    const std::string text = literal::write(chain, true);
    if (!chains::same_bits(literal::read(text, error), ChainRead_fromString(text, error))) std::exit(1);
    add("ChainRead_fromString/2000", text, size_of(literal::read), size_of(ChainRead_fromString), same);
    for (const bool plain : {true, false})
        add(
            std::string("ChainWrite_toString/2000/") + (plain ? "plain" : "pdb"), chain,
            [plain](const Chain& c) { return literal::write(c, plain); },
            [plain](const Chain& c) { return ChainWrite_toString(c, plain); }, same);
}

/// Every word, into eight sums, so that nothing but the reading takes time.
#if defined(__x86_64__) && !defined(__clang__)
__attribute__((target_clones("avx512f", "avx2", "default"), optimize("unroll-loops")))
#endif
std::uint64_t
read_all(const std::vector<std::uint64_t>& words) {
    constexpr std::size_t width = 32;
    std::uint64_t sums[width] = {};
    for (std::size_t i = 0; i + width <= words.size(); i += width)
        for (std::size_t k = 0; k < width; ++k) sums[k] |= words[i + k];
    std::uint64_t all = 0;
    for (const std::uint64_t sum : sums) all |= sum;
    return all;
}

/// What no triangle test can beat: reading the positions of 1,600 beads, half of 3,200, from the first-level
/// cache, as floats.
void add_limit() {
    static const std::vector<std::uint64_t> words(1600 * 3 * sizeof(float) / sizeof(std::uint64_t), 1);
    const auto read = [](auto&) {
        benchmark::ClobberMemory();
        return read_all(words);
    };
    add(
        "limit/read_1600_positions", 0, read, read, [](auto, auto) { return true; }, false);
}

} // namespace

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    if (smoke) std::swap(argv[1], argv[argc - 1]), --argc;
    // The debug lines of ChainReduce() go nowhere; the report goes to where they would have gone.
    std::ostream report(std::cout.rdbuf(nullptr));
    FillFulerenData();

    add_reductions(smoke);
    if (!smoke) add_survey("examples/data/trefoil.txt");
    for (int i = 1; i < argc; ++i)
        if (argv[i][0] != '-') add_survey(argv[i]);
    add_measures(smoke);
    add_texts();
    add_limit();

    benchmark::Initialize(&argc, argv);
    report.precision(3);
    Table table(report);
    benchmark::RunSpecifiedBenchmarks(&table);
}
