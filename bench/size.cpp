// How long every operation takes on very large input, and how much memory the process has needed by
// then. Not a test: `build/release/bench/size` prints a table.
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/operations.hpp"

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <filesystem>

namespace {

template <class Run> void timed(const char* name, Run run) {
    const auto start = std::chrono::steady_clock::now();
    run();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%9.3f s %6ld MiB  %s\n", took.count(), usage.ru_maxrss / 1024, name);
}

void read(const char* name, const std::string& text) {
    timed(name, [&] {
        bool error = false;
        ChainRead_fromString(text, error);
    });
}

} // namespace

int main() {
    const Silence quiet;
    chains::Random random(71);
    FillFulerenData();
    const std::string file = std::filesystem::temp_directory_path() / "loopwise_size.txt";
    operations::Values values = operations::make_values(1, file);
    values.chain = chains::make(chains::Kind::lattice, 100000, random);
    values.structure = {values.chain, values.chain};
    values.text = ChainWrite_toString(values.chain, true);
    std::puts("a lattice walk of 100,000 beads; in structures, twice");
    for (const operations::Operation& operation : operations::all()) {
        const bool cubic = std::string(operation.name).starts_with("Chain") &&
                           std::string(operation.name).find("Reduce") != std::string::npos;
        if (!cubic) timed(operation.name, [&] { operations::digest(operation, values); });
    }
    std::puts("large files and texts");
    const Chain million = chains::make(chains::Kind::tangle, 1000000, random);
    timed("write a file of a million lines", [&] { ChainWrite(values.file.data(), million, true); });
    bool error = false;
    timed("read it", [&] { ChainRead(values.file.data(), error); });
    std::filesystem::remove(file);
    read("a line of 10 MB of digits", std::string(10000000, '7'));
    read("a line of 10 MB after four numbers", "1 2 3 4 " + std::string(10000000, 'x'));
    std::string rubbish, numbered;
    for (int i = 0; i < 1000000; ++i) {
        rubbish += std::to_string(i) + " 1 " + std::to_string(i) + " @#$ %\n";
        numbered += "7 " + std::to_string(i) + " +x 1\n";
    }
    read("a million lines of rubbish", rubbish);
    read("a million lines that only a stream reads", numbered);
    Chain compact = chains::make(chains::Kind::compact, 20000, random);
    timed("ChainReduce of a compact chain of 20,000 beads", [&] { ChainReduce(compact, false); });
    std::printf("%zu beads left\n", compact.size());
}
