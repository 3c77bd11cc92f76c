// The same results wherever and however the library runs: in threads, by every compiler, at every level
// of optimisation.
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/files.hpp"
#include "support/operations.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

namespace {

TEST(Sameness, ThreadsOnSeparateValuesComeToTheResultsOfOne) {
    constexpr std::size_t threads = 8;
    constexpr int rounds = 5;
    FillFulerenData();
    const Silence quiet;
    const auto digests = [](std::size_t number) {
        std::vector<std::uint64_t> results;
        MemoryFile file;
        for (int round = 0; round < rounds; ++round) {
            const operations::Values values = operations::make_values(50 + number, file.name());
            for (const operations::Operation& operation : operations::all())
                if (!operation.draws) results.push_back(operations::digest(operation, values));
        }
        return results;
    };
    std::vector<std::vector<std::uint64_t>> alone, together(threads);
    for (std::size_t i = 0; i < threads; ++i) alone.push_back(digests(i));
    std::vector<std::thread> running;
    for (std::size_t i = 0; i < threads; ++i) running.emplace_back([&, i] { together[i] = digests(i); });
    for (std::thread& thread : running) thread.join();
    for (std::size_t i = 0; i < threads; ++i) EXPECT_EQ(together[i], alone[i]) << "thread " << i;
}

/// Of all operations on these values: results, warnings and the draws.
std::uint64_t digest_of_all(const operations::Values& values, unsigned seed) {
    const Capture printed;
    operations::Digest warnings;
    std::uint64_t all = 0;
    std::srand(seed);
    for (const operations::Operation& operation : operations::all())
        all = all * 31 + operations::digest(operation, values);
    warnings.add(printed.cerr.str() + printed.clog.str());
    return all * 31 + warnings.value();
}

/// A new number here means that some result has changed by at least a bit; digest.sh builds the test by
/// two compilers with many options.
TEST(Sameness, EveryBuildGivesTheseBits) {
    FillFulerenData();
    std::uint64_t all = 0;
    MemoryFile file;
    operations::Values values = operations::make_values(0, file.name());
    for (unsigned seed = 0; seed < 2000; ++seed) {
        chains::Random random(seed);
        values.structure = chains::make_structure(random);
        values.chain = values.structure.empty() ? Chain{} : values.structure[0];
        all = all * 31 + digest_of_all(values, seed);
    }
    EXPECT_EQ(all, 0x3ce5'64a3'cc40'ccaaU);
    // As many components as there are directions for one way of closing, and one more.
    for (const std::size_t components : {59U, 60U, 61U, 200U, 201U, 400U, 401U}) {
        chains::Random random(components);
        values.structure.resize(components);
        for (Chain& chain : values.structure) chain = chains::make(chains::Kind::tangle, 4, random);
        all = all * 31 + digest_of_all(values, 1);
    }
    EXPECT_EQ(all, 0xd5ae'b43d'eb84'74fdU);
}

} // namespace
