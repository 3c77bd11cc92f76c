// Two builds of the library, or the library and the literal procedure, measured by turns in one run: the script
// `against` beside this file makes the older build. Results are compared before anything is measured.
//
//     against OLD.so NEW.so [part of the names of rows]
#include "src/reduce/reduction.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace {

using chains::Kind;
using Operation = std::function<void(Structure&)>;

/// Of this thread, since other work on the machine shall not count.
double processor_seconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Seconds for one call, of so many in a row on copies made before.
double seconds(const Structure& start, const Operation& operation, int calls) {
    std::vector<Structure> copies(static_cast<std::size_t>(calls), start);
    const double before = processor_seconds();
    for (Structure& copy : copies) operation(copy);
    return (processor_seconds() - before) / calls;
}

struct Row {
    std::string name;
    Structure start;
    Operation old_one, new_one;
};

void measure(const Row& row) {
    Structure a = row.start, b = row.start;
    row.old_one(a), row.new_one(b);
    if (!std::equal(a.begin(), a.end(), b.begin(), b.end(), chains::same_bits)) {
        std::fprintf(stderr, "%s: the results differ\n", row.name.c_str());
        std::exit(1);
    }
    constexpr double batch = 2e-4, all = 0.4;
    const double once = seconds(row.start, row.old_one, 1);
    const int calls = std::max(1, static_cast<int>(batch / once));
    const int rounds = std::clamp(static_cast<int>(all / (once * calls)), 2, 200);
    double old_best = 1e300, new_best = 1e300;
    for (int round = 0; round < rounds; ++round) {
        old_best = std::min(old_best, seconds(row.start, row.old_one, calls));
        new_best = std::min(new_best, seconds(row.start, row.new_one, calls));
    }
    std::printf("| %s | %.4g | %.4g | %.2f |\n", row.name.c_str(), old_best * 1e6, new_best * 1e6, old_best / new_best);
    std::fflush(stdout);
}

void* loaded(const char* file) {
    void* const library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) std::fprintf(stderr, "%s\n", dlerror()), std::exit(1);
    return library;
}

Operation chain_reduce(void* library, bool closed) {
    const auto function =
        reinterpret_cast<decltype(&ChainReduce)>(dlsym(library, "_Z11ChainReduceRSt6vectorI9ChainAtomSaIS0_EEb"));
    return [=](Structure& s) { function(s[0], closed); };
}

Operation chains_reduce(void* library, bool closed) {
    const auto function = reinterpret_cast<decltype(&ChainsReduce)>(
        dlsym(library, "_Z12ChainsReduceRSt6vectorIS_I9ChainAtomSaIS0_EESaIS2_EEb"));
    return [=](Structure& s) { function(s, closed); };
}

Chain made(Kind kind, int length) {
    chains::Random random(7);
    return chains::make(kind, length, random);
}

struct Named {
    Kind kind;
    const char* name;
};

template <class Visit> void for_each_row(void* old_library, void* new_library, Visit visit) {
    const auto against = [&](const Named& kind, int length, bool closed) {
        const std::string name = std::string("ChainReduce, ") + kind.name + (closed ? ", closed, " : ", open, ");
        visit(name + std::to_string(length), [=] {
            return Row{
                "", {made(kind.kind, length)}, chain_reduce(old_library, closed), chain_reduce(new_library, closed)};
        });
    };
    for (const int length : {100, 200, 400, 800, 1600, 3200})
        for (const bool closed : {false, true}) against({Kind::compact, "compact"}, length, closed);
    against({Kind::tangle, "tangle"}, 200, false);
    against({Kind::lattice, "lattice"}, 200, false);
    against({Kind::lattice, "lattice"}, 800, false);
    visit("ChainsReduce, 6 chains of 200", [=] {
        chains::Random random(7);
        Structure entangled(6);
        for (Chain& component : entangled) component = chains::make(Kind::compact, 200, random);
        return Row{"", entangled, chains_reduce(old_library, false), chains_reduce(new_library, false)};
    });
    for (const int length : {10000, 30000, 100000}) {
        visit("ChainsReduce, compact, closed, " + std::to_string(length), [=] {
            return Row{
                "", {made(Kind::compact, length)}, chains_reduce(old_library, true), chains_reduce(new_library, true)};
        });
    }
    for (const int length : {10000, 30000})
        visit("new ChainReduce (as old) by new ChainsReduce, closed, " + std::to_string(length), [=] {
            return Row{
                "", {made(Kind::compact, length)}, chain_reduce(new_library, true), chains_reduce(new_library, true)};
        });
    constexpr Named kinds[] = {{Kind::compact, "compact"},
                               {Kind::lattice, "lattice"},
                               {Kind::tangle, "tangle"},
                               {Kind::planar, "planar"},
                               {Kind::straight, "straight"}};
    for (const Named& kind : kinds)
        for (const int length : {4, 5, 6, 8, 12, 16, 30, 50, 100, 200, 400, 800})
            for (const bool closed : {false, true}) {
                const std::string name = std::string("literal, ") + kind.name + (closed ? ", closed, " : ", open, ");
                visit(name + std::to_string(length), [=] {
                    return Row{"",
                               {made(kind.kind, length)},
                               [=](Structure& s) { literal::reduce(s[0], closed); },
                               [=](Structure& s) { loopwise::reduce::reduce(s[0], closed); }};
                });
            }
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: against OLD.so NEW.so [part of the names of rows]\n", stderr);
        return 2;
    }
    std::cout.rdbuf(nullptr); // where the debug lines go
    const std::string wanted = argc > 3 ? argv[3] : "";
    std::puts("| work | old, us | new, us | ratio |\n|---|---|---|---|");
    for_each_row(loaded(argv[1]), loaded(argv[2]), [&](const std::string& name, const auto& make) {
        if (name.find(wanted) == std::string::npos) return;
        Row row = make();
        row.name = name;
        measure(row);
    });
}
