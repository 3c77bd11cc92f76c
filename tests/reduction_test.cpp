#include "src/reduce/reduction.hpp"
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/effort.hpp"
#include "support/eliminated.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using Ids = std::vector<int>;

Ids ids(const Chain& chain) {
    Ids result;
    for (const ChainAtom& atom : chain) result.push_back(atom.id);
    return result;
}

Ids left(Chain chain, bool closed) {
    const Silence quiet;
    const int count = ChainReduce(chain, closed);
    EXPECT_EQ(count, static_cast<int>(chain.size()));
    return ids(chain);
}

const Chain five{{0, 0, 0, 1}, {3, 1, 0, 2}, {5, 4, 1, 3}, {9, 3, 7, 4}, {2, 8, 11, 5}};
const Chain four(five.begin(), five.begin() + 4);

TEST(ChainReduction, KeepsTheEndsOfAnOpenChainAndRepeatsThatOfALoop) {
    EXPECT_EQ(left(five, false), (Ids{1, 4, 5}));
    EXPECT_EQ(left(four, true), (Ids{1, 3, 4}));
    EXPECT_EQ(left(chains::with_repeated_end(four), false), (Ids{1, 3, 4, 1}));
    EXPECT_EQ(left(chains::with_repeated_end({five[0], five[1], five[2]}), false), (Ids{1, 2, 3, 1}));
    EXPECT_EQ(left({five[0]}, false), (Ids{1}));
    EXPECT_EQ(left({}, true), (Ids{}));
    Chain far_apart = five;
    far_apart.back().id = 1;
    EXPECT_EQ(left(far_apart, false), (Ids{1, 4, 1}));
}

TEST(ChainReduction, TakesAnEndWithinTheToleranceForARepeatedOne) {
    const Silence quiet;
    Chain nearly = chains::with_repeated_end(four), not_quite = nearly;
    nearly.back().x += std::nextafter(EPS, 0);
    not_quite.back().x += EPS;
    EXPECT_EQ(ChainReduce(nearly, false), 4);
    EXPECT_EQ(nearly.back().x, 0);
    EXPECT_EQ(ChainReduce(not_quite, false), 3);
    EXPECT_EQ(not_quite.back().x, EPS);
}

/// One works on the stack as long as there is room, the other on the heap.
TEST(ChainReduction, OfALongChainIsThatOfAStructureOfOneChain) {
    const Silence quiet;
    chains::Random random(9);
    for (const int length : {3440, 3456, 6000}) {
        Chain chain = chains::make(chains::Kind::compact, length, random);
        Structure structure{chain};
        EXPECT_EQ(ChainReduce(chain, true), ChainsReduce(structure, true));
        EXPECT_TRUE(chains::same_bits(chain, structure[0])) << length;
    }
}

/// Where a loop runs round twice, nearly the same way, one segment alone blocks many a triangle, wherever in the rear
/// it is.
TEST(ChainReduction, MissesNoSegmentOfTheRear) {
    constexpr std::size_t slots = 64;
    const loopwise::model::InstructionSet set = loopwise::model::available_instruction_sets().back();
    chains::Random random(5);
    for (int round = 0; round < 40 / effort::less; ++round) {
        const int length = round % 2 == 0 ? 750 + random.below(100) : 66 + random.below(24);
        const double phase = random.between(0, 7);
        Chain chain;
        for (int i = 0; i < length; ++i) {
            const double a = phase + 4 * std::numbers::pi * i / length;
            const double out = 2 + std::cos(a) + random.between(0, 1e-3);
            chain.push_back({out * std::cos(a), out * std::sin(a), std::sin(a), i});
        }
        ASSERT_TRUE(
            chains::same_bits(eliminated(chain, true, set, slots), eliminated(chain, true, set, chain.size() + 1)));
    }
}

/// Long enough for cells of directions and boxes around boxes. Of coordinates that are multiples of a sixteenth some
/// triangles are parallel to a segment far away and to none that is near.
TEST(StructureReduction, OfLongChainsIsThatWithoutTheIndex) {
    chains::Random random(33);
    for (const double step : {0.0, 1.0 / 16, 1.0 / 4}) {
        Structure start(3);
        for (Chain& chain : start) {
            chain = chains::make(chains::Kind::compact, 3000, random);
            if (step == 0) continue;
            for (ChainAtom& atom : chain) {
                atom.x = std::round(atom.x / step) * step;
                atom.y = std::round(atom.y / step) * step;
                atom.z = std::round(atom.z / step) * step;
            }
        }
        for (const bool closed : {false, true}) {
            constexpr std::size_t always = 0, never = 1U << 30;
            Structure with = start, without = start;
            EXPECT_EQ(loopwise::reduce::reduce(with, closed, always), loopwise::reduce::reduce(without, closed, never));
            for (std::size_t i = 0; i < with.size(); ++i) EXPECT_EQ(ids(with[i]), ids(without[i])) << step;
        }
    }
}

TEST(StructureReduction, HoldsWhatOtherComponentsHold) {
    const Chain corner{{0, 0, 0, 1}, {1, 0, 0, 2}, {1, 1, 0, 3}, {0, 1, 5, 4}},
        needle{{0.7, 0.3, -1, 1}, {0.7, 0.3, 1, 2}};
    Structure alone{corner}, held{corner, needle}, blocked{corner, {{50, 50, 50, 7}, {50, 50, 50, 7}}};
    EXPECT_EQ(ChainsReduce(alone, false), 3);
    EXPECT_EQ(ids(alone[0]), (Ids{1, 3, 4}));
    EXPECT_EQ(ChainsReduce(held, false), 5);
    EXPECT_EQ(ids(held[0]), (Ids{1, 2, 4}));
    // Two copies of one atom are a loop whose closing segment has no length, which blocks everything.
    EXPECT_EQ(ChainsReduce(blocked, true), 6);
}

} // namespace
