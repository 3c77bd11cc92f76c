#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/eliminated.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace {

std::vector<int> ids(const Chain& chain) {
    std::vector<int> result;
    for (const ChainAtom& atom : chain) result.push_back(atom.id);
    return result;
}

int quiet_reduce(Chain& chain, bool closed) {
    const Capture printed;
    return ChainReduce(chain, closed);
}

const Chain five{{0, 0, 0, 1}, {3, 1, 0, 2}, {5, 4, 1, 3}, {9, 3, 7, 4}, {2, 8, 11, 5}};

TEST(ChainReduction, PrintsOneLineForEveryCall) {
    Chain none, three(five.begin(), five.begin() + 3);
    Capture printed;
    EXPECT_EQ(ChainReduce(none, true), 0);
    EXPECT_EQ(ChainReduce(three, false), 3);
    const std::string line =
        "JESTEM w loopwise!, ChainReduce - czy to jeszcze w ogole jest wywolywane, a nie zawsze "
        "ChainsReduce?, EPS=1e-05\n";
    EXPECT_EQ(printed.cout.str(), line + line);
    EXPECT_EQ(ids(three), (std::vector{1, 2, 3}));
}

TEST(ChainReduction, KeepsTheEndsOfAnOpenChainAndRepeatsThatOfALoop) {
    const Chain loop_of_four(five.begin(), five.begin() + 4);
    Chain open = five, loop(five.begin(), five.begin() + 4), stored = chains::with_repeated_end(loop),
          triangle = chains::with_repeated_end({five[0], five[1], five[2]}), one{five[0]}, far_apart = five;
    EXPECT_EQ(quiet_reduce(open, false), 3);
    EXPECT_EQ(ids(open), (std::vector{1, 4, 5}));
    EXPECT_EQ(quiet_reduce(loop, true), 3);
    EXPECT_EQ(ids(loop), (std::vector{1, 3, 4}));
    EXPECT_EQ(quiet_reduce(stored, false), 4);
    EXPECT_EQ(ids(stored), (std::vector{1, 3, 4, 1}));
    EXPECT_EQ(quiet_reduce(triangle, false), 4);
    EXPECT_EQ(ids(triangle), (std::vector{1, 2, 3, 1}));
    EXPECT_EQ(quiet_reduce(one, false), 1);
    EXPECT_EQ(ids(one), std::vector{1});
    Chain nearly = chains::with_repeated_end(loop_of_four), not_quite = nearly;
    nearly.back().x += std::nextafter(EPS, 0);
    not_quite.back().x += EPS;
    EXPECT_EQ(quiet_reduce(nearly, false), 4);
    EXPECT_EQ(nearly.back().x, 0);
    EXPECT_EQ(quiet_reduce(not_quite, false), 3);
    EXPECT_EQ(not_quite.back().x, EPS);
    far_apart.back().id = 1;
    EXPECT_EQ(quiet_reduce(far_apart, false), 3);
    EXPECT_EQ(ids(far_apart), (std::vector{1, 4, 1}));
}

void expect_literal(const Chain& chain, bool closed, std::size_t slots, loopwise::InstructionSet set) {
    Chain expected = chain;
    literal::reduce(expected, closed);
    ASSERT_TRUE(chains::same_bits(eliminated(chain, closed, set, slots), expected))
        << name(set) << ", " << slots << " slots, closed: " << closed << ", " << chains::text(chain);
}

/// Whatever the processor, and however much of the chain has no slots.
TEST(Elimination, IsTheSameForEveryInstructionSetAndWorkspace) {
    chains::Random random(12);
    for (const chains::Kind kind : chains::all_kinds)
        for (int i = 0; i < 12; ++i) {
            const Chain chain = chains::make(kind, i < 8 ? 10 + random.below(250) : 300, random);
            for (const loopwise::InstructionSet set : loopwise::available_instruction_sets())
                for (const std::size_t slots : {64U, 128U, 512U})
                    expect_literal(chain, i % 2 == 0, slots, set);
        }
    // A rear behind a front that is blocked all over: where its first bead stood when it moves.
    for (int i = 0; i < 3000; ++i)
        expect_literal(chains::make(chains::Kind::tangle, 66 + random.below(110), random), i % 2 == 0, 64,
                       loopwise::available_instruction_sets().back());
}

void expect_literal(const Structure& structure, bool closed) {
    Structure ours = structure, theirs = structure;
    const Capture printed;
    ASSERT_EQ(ChainsReduce(ours, closed), literal::reduce(theirs, closed));
    EXPECT_TRUE(printed.silent());
    Structure indexed = structure;
    loopwise::reduce(indexed, closed, 0);
    ASSERT_TRUE(std::equal(indexed.begin(), indexed.end(), theirs.begin(), theirs.end(), chains::same_bits));
    for (std::size_t i = 0; i < structure.size(); ++i)
        ASSERT_TRUE(chains::same_bits(ours[i], theirs[i]))
            << "component " << i << ": " << chains::text(structure[i]);
}

/// Some long enough for holes to be closed while other components hold triangles.
TEST(StructureReduction, EqualsTheLiteralProcedure) {
    chains::Random random(5);
    for (int i = 0; i < 2700; ++i) {
        const bool tall = i % 9 == 0;
        const int kinds = tall && i % 27 > 0 ? 2 : static_cast<int>(std::size(chains::all_kinds));
        const chains::Kind kind = chains::all_kinds[random.below(kinds)];
        Structure structure(static_cast<std::size_t>(random.below(7)));
        for (Chain& chain : structure) {
            chain = chains::make(kind, random.below(random.below(4) == 0 ? 4 : tall ? 110 : 24), random);
            if (random.below(5) == 0) chain = chains::with_repeated_end(chain);
            if (i % 3 == 1) // far from the others
                for (ChainAtom& atom : chain)
                    atom.x += 100.0 * static_cast<double>(&chain - structure.data());
            if (random.below(20) == 0) chain = {{1, 2, 3, 4}, {1, 2, 3, 4}};
        }
        expect_literal(structure, i % 2 == 0);
    }
}

TEST(StructureReduction, HoldsWhatOtherComponentsHold) {
    const Chain corner{{0, 0, 0, 1}, {1, 0, 0, 2}, {1, 1, 0, 3}, {0, 1, 5, 4}},
        needle{{0.7, 0.3, -1, 1}, {0.7, 0.3, 1, 2}};
    Structure alone{corner}, held{corner, needle}, blocked{corner, {{50, 50, 50, 7}, {50, 50, 50, 7}}};
    EXPECT_EQ(ChainsReduce(alone, false), 3);
    EXPECT_EQ(ids(alone[0]), (std::vector{1, 3, 4}));
    EXPECT_EQ(ChainsReduce(held, false), 5);
    EXPECT_EQ(ids(held[0]), (std::vector{1, 2, 4}));
    // Two copies of one atom are a loop whose closing segment has no length, which blocks everything.
    EXPECT_EQ(ChainsReduce(blocked, true), 6);
}

} // namespace
