// Very many chains, small ones above all, against the literal versions and for every instruction set.
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/effort.hpp"
#include "support/eliminated.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

namespace {

void expect_literal(const Chain& chain, bool closed) {
    Chain expected = chain;
    literal::reduce(expected, closed);
    const bool stored_as_loop = literal::repeats_end(chain);
    for (const loopwise::InstructionSet set : loopwise::available_instruction_sets()) {
        if (stored_as_loop) break; // which the engine by itself does not know
        for (const bool indexed : {false, true})
            ASSERT_TRUE(chains::same_bits(eliminated(chain, closed, set, 512, indexed), expected))
                << name(set) << ", indexed: " << indexed << ", closed: " << closed << ", "
                << chains::text(chain);
    }
    const Silence quiet;
    Chain reduced = chain;
    ASSERT_EQ(ChainReduce(reduced, closed), static_cast<int>(expected.size()));
    ASSERT_TRUE(chains::same_bits(reduced, expected)) << "closed: " << closed << ", " << chains::text(chain);
    ASSERT_EQ(DiameterOfChain(chain), literal::diameter({chain})) << chains::text(chain);
    ASSERT_EQ(RadiusOfChain(chain), literal::radius(chain)) << chains::text(chain);
}

/// The chain of so many points on a grid that a number stands for.
Chain on_grid(std::uint64_t code, int points, int wide, int high) {
    Chain chain;
    for (int id = 0; id < points; ++id) {
        const auto take = [&](int size) {
            const auto digit = code % static_cast<std::uint64_t>(size);
            code /= static_cast<std::uint64_t>(size);
            return static_cast<double>(digit);
        };
        const double x = take(wide), y = take(wide), z = take(high);
        chain.push_back({x, y, z, id});
    }
    return chain;
}

/// All the coincidences that small chains can have.
TEST(Differential, AllChainsOfFourToSixPointsOnAGrid) {
    for (int points = 4; points <= 6; ++points)
        for (std::uint64_t code = 0; code < 1U << 3 * points; code += effort::less)
            for (const bool closed : {false, true}) expect_literal(on_grid(code, points, 2, 2), closed);
}

TEST(Differential, RandomChainsOnAGrid) {
    chains::Random random(31);
    for (int i = 0; i < 200000 / effort::less; ++i) {
        std::uint64_t code = 0;
        for (int digit = 0; digit < 16; ++digit) code = code * 10 + static_cast<unsigned>(random.below(10));
        const Chain chain = on_grid(code, 5 + i % 8, 3, 2);
        expect_literal(i % 7 == 0 ? chains::with_repeated_end(chain) : chain, i % 2 == 0);
    }
}

TEST(Differential, ChainsOfEveryKind) {
    chains::Random random(32);
    for (int i = 0; i < 3000 / effort::less; ++i) {
        const chains::Kind kind =
            chains::all_kinds[static_cast<std::size_t>(i) % std::size(chains::all_kinds)];
        const int length = i % 3 == 0 ? 50 + random.below(251) : 1 + random.below(24);
        const Chain chain = chains::make(kind, length, random);
        expect_literal(i % 5 == 0 ? chains::with_repeated_end(chain) : chain, i % 2 == 0);
    }
}

} // namespace
