// The properties that hold for every input, on many: seeds, grids, and sizes at the limits.
#include "support/effort.hpp"
#include "support/properties.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

namespace {

TEST(Properties, HoldForChainsOfEveryKind) {
    for (std::uint64_t seed = 0; seed < 6000 / effort::less; ++seed) properties::hold(chains::Random(seed));
}

/// The chain of so many points on a grid that a number stands for, from a corner of the grid.
Chain on_grid(std::uint64_t code, int points, int wide, int high) {
    Chain chain;
    const auto take = [&](int size) {
        const auto digit = code % static_cast<std::uint64_t>(size);
        code /= static_cast<std::uint64_t>(size);
        return static_cast<double>(digit);
    };
    for (int id = 0; id < points; ++id) {
        const double x = take(wide), y = take(wide), z = take(high);
        chain.push_back({x, y, z, id});
    }
    return chain;
}

/// All the coincidences that small chains can have.
TEST(Properties, HoldForAllChainsOfFourToSixPointsOnAGrid) {
    for (int points = 4; points <= 6; ++points)
        for (std::uint64_t code = 0; code < 1U << 3 * points; code += 8 * effort::less)
            for (const bool closed : {false, true}) properties::reduces(on_grid(code, points, 2, 2), closed);
}

TEST(Properties, HoldForRandomChainsOnAGrid) {
    chains::Random random(31);
    for (int i = 0; i < 50000 / effort::less; ++i) {
        const Chain chain = on_grid(random.bits(), 5 + i % 8, 3, 2);
        properties::reduces(i % 7 == 0 ? chains::with_repeated_end(chain) : chain, i % 2 == 0);
    }
}

TEST(Properties, HoldForLongChains) {
    chains::Random random(12);
    for (int i = 0; i < 400 / effort::less; ++i)
        properties::reduces(
            chains::make(chains::all_kinds[random.below(std::size(chains::all_kinds))], 50 + random.below(251), random),
            i % 2 == 0);
    // A rear behind a front that is blocked all over: where its first bead stood when it moves.
    for (int i = 0; i < 2000 / effort::less; ++i)
        properties::reduces(chains::make(chains::Kind::tangle, 66 + random.below(110), random), i % 2 == 0);
    properties::measures({chains::on_sphere(2500, random)}); // more candidates than fit one block
}

TEST(Properties, HoldForNumbersOfAllSizes) {
    chains::Random random(13);
    Chain chain;
    for (int i = 0; i < 60000; ++i) {
        double c[3];
        for (double& x : c) {
            x = random.between(-1, 1) * std::pow(10.0, random.below(14) - 4);
            if (i % 3 == 0) x = std::round(x * 1e3) / 1e3;
            if (i % 5 == 0) x = (random.below(900000) + 100000.5) / std::pow(10.0, random.below(7)); // ties
        }
        chain.push_back({c[0], c[1], c[2], i % 2 == 0 ? i : -random.below(2147483647)});
    }
    properties::writes(chain);
}

TEST(Properties, HoldForBrokenText) {
    chains::Random random(14);
    const std::string pieces[] = {
        "1",     "27",  "-3.5",  "1e3",    "2.5e-2",     "+4",    ".5",    "-",   "1.",
        "0x1p3", "nan", "1e999", "7e-400", "9999999999", "abc",   "1.5.2", "3,4", "\t",
        "\r",    "\v",  "\n",    "\n\n",   "\0",         "00012", "1e",    "-0",  "4.1234567890123456789"};
    for (int i = 0; i < 10000 / effort::less; ++i) {
        std::string text;
        for (int line = random.below(5) + 1; line-- > 0; text += '\n') {
            for (int field = 4; field-- > 0; text += ' ') {
                text +=
                    random.below(8) != 0 ? std::to_string(random.below(100)) : pieces[random.below(std::size(pieces))];
                if (field < 3 && random.below(2) == 0)
                    text += '.' + std::to_string(random.bits()).substr(0, static_cast<std::size_t>(random.below(18)));
            }
            if (random.below(9) == 0) text += pieces[random.below(std::size(pieces))];
        }
        properties::hold(text);
    }
}

TEST(Properties, HoldForTheCorpusOfTheFuzzers) {
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(CORPUS)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        properties::hold(bytes);
        properties::hold(chains::Random(0, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}));
        ++files;
    }
    EXPECT_GT(files, 10);
}

} // namespace
