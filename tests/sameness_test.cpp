// The same results wherever and however the library runs: in threads, by every compiler, at every level
// of optimisation.
#include "support/capture.hpp"
#include "support/operations.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

namespace {

std::string file(std::size_t number) {
    return testing::TempDir() + "loopwise_sameness_" + std::to_string(number) + ".txt";
}

TEST(Sameness, ThreadsOnSeparateValuesComeToTheResultsOfOne) {
    constexpr std::size_t threads = 8;
    constexpr int rounds = 5;
    FillFulerenData();
    const Silence quiet;
    const auto digests = [](std::size_t number) {
        std::vector<std::uint64_t> results;
        for (int round = 0; round < rounds; ++round) {
            const operations::Values values = operations::make_values(50 + number, file(number));
            for (const operations::Operation& operation : operations::all())
                if (!operation.draws) results.push_back(operations::digest(operation, values));
        }
        std::remove(file(number).c_str());
        return results;
    };
    std::vector<std::vector<std::uint64_t>> alone, together(threads);
    for (std::size_t i = 0; i < threads; ++i) alone.push_back(digests(i));
    std::vector<std::thread> running;
    for (std::size_t i = 0; i < threads; ++i) running.emplace_back([&, i] { together[i] = digests(i); });
    for (std::thread& thread : running) thread.join();
    for (std::size_t i = 0; i < threads; ++i) EXPECT_EQ(together[i], alone[i]) << "thread " << i;
}

/// A new number here means that some result has changed by at least a bit; digest.sh builds the test by
/// two compilers with many options.
TEST(Sameness, EveryBuildGivesTheseBits) {
    FillFulerenData();
    const Silence quiet;
    std::uint64_t all = 0;
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        const operations::Values values = operations::make_values(seed, file(99));
        std::srand(static_cast<unsigned>(seed));
        for (const operations::Operation& operation : operations::all())
            all = all * 31 + operations::digest(operation, values);
    }
    std::remove(file(99).c_str());
    EXPECT_EQ(all, 0xa25f'14ff'2609'e446U);
}

} // namespace
