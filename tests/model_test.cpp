#include "model/diameter.hpp"
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Chain with_ids(std::initializer_list<int> ids) {
    Chain chain;
    for (const int id : ids) chain.push_back({1.0 * id, 0, 0, id});
    return chain;
}

TEST(Comparisons, AreStrictOrInclusiveAtExactlyTheTolerance) {
    EXPECT_FALSE(CompareEq(0.0, 1e-5));
    EXPECT_TRUE(CompareEq(0.0, std::nextafter(1e-5, 0)));
    EXPECT_TRUE(CompareGt(1e-5, 0.0));
    EXPECT_FALSE(CompareGt(std::nextafter(1e-5, 0), 0.0));
    EXPECT_FALSE(CompareGeq(0.0, 1e-5));
    EXPECT_TRUE(CompareGeq(std::nextafter(0.0, 1), 1e-5));
    EXPECT_FALSE(CompareGt(1.0, 1.0));
    for (const auto compare : {CompareEq, CompareGt, CompareGeq})
        EXPECT_FALSE(compare(nan, 1) || compare(1, nan) || compare(nan, nan));
}

TEST(Identifiers, AreAtLeastMinusOneAndTakenFromEveryComponent) {
    Chain increasing = with_ids({3, 9, 4}), negative = with_ids({-5, -7}), none;
    EXPECT_EQ(maxIdChain(increasing), 9);
    EXPECT_EQ(maxIdChain(negative), -1);
    EXPECT_EQ(maxIdChain(none), -1);
    Structure two{increasing, with_ids({40, 2})}, hollow{increasing, none}, no_component;
    EXPECT_EQ(maxIdComps(two), 40);
    EXPECT_EQ(maxIdComps(no_component), -1);
    EXPECT_FALSE(IsEmptyStructure(two));
    EXPECT_TRUE(IsEmptyStructure(hollow));
    EXPECT_TRUE(IsEmptyStructure(no_component));
}

TEST(Measures, OfSmallChains) {
    const Chain none, pair{{0, 0, 0, 1}, {2, 4, 6, 2}}, line{{0, 0, 0, 1}, {10, 0, 0, 2}, {5, 0, 0, 3}},
        off_centre{{0, 0, 0, 1}, {0, 0, 0, 2}, {3, 0, 0, 3}};
    EXPECT_EQ(CentreOfChain(none).z, 0);
    EXPECT_EQ(CentreOfChain(pair).y, 2);
    EXPECT_EQ(RadiusOfChain(none), 0);
    EXPECT_EQ(RadiusOfChain(off_centre), 2);
    EXPECT_EQ(DiameterOfChain(none), 0);
    EXPECT_EQ(DiameterOfChain({pair[1]}), 0);
    EXPECT_EQ(DiameterOfChain(line), 10);
    EXPECT_EQ(DiameterOfStructure({}), 0);
    EXPECT_EQ(DiameterOfStructure({none, none}), 0);
    EXPECT_EQ(DiameterOfStructure({{{0, 0, 0, 1}}, none, {{0, 0, 3, 1}}}), 3);
    EXPECT_EQ(DiameterOfStructure({{{1, 0, 0, 1}}, line}), 10);
}

TEST(Measures, PassOverDistancesThatAreNotNumbers) {
    const Chain chain{{0, 0, 0, 1}, {nan, 0, 0, 2}, {3, 4, 0, 3}};
    EXPECT_EQ(DiameterOfChain(chain), 5);
    EXPECT_EQ(RadiusOfChain(chain), 0);
    EXPECT_TRUE(std::isnan(CentreOfChain(chain).x));
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(DiameterOfChain({{inf, 0, 0, 1}, {inf, 0, 0, 2}, {0, 0, 0, 3}}), inf);
}

TEST(Measures, SumInChainOrderAndDivideOnce) {
    const Chain chain{{1e16, 0, 0, 1}, {1, 0, 0, 2}, {1, 0, 0, 3}};
    EXPECT_EQ(CentreOfChain(chain).x, ((1e16 + 1) + 1) / 3);
}

TEST(Measures, DiametersEqualThePlainOnes) {
    chains::Random random(21);
    const auto expect_equal = [](const Structure& structure) {
        const double plain = literal::diameter(structure), ours = DiameterOfStructure(structure);
        ASSERT_EQ(ours, plain) << chains::text(structure[0]);
    };
    for (const chains::Kind kind : chains::all_kinds)
        for (int i = 0; i < 60; ++i)
            expect_equal({chains::make(kind, 1 + random.below(90), random),
                          {},
                          chains::make(kind, random.below(30), random)});
    expect_equal({chains::on_sphere(2500, random)}); // more candidates than fit one block
    expect_equal({{{1e-155, 0, 0, 1}, {0, 1.3e-155, 0, 2}, {2e-155, 1e-155, 0, 3}, {0, 2e-155, 1e-155, 4}}});
}

/// The name of the version that runs is printed; LOOPWISE_INSTRUCTIONS chooses another.
TEST(InstructionSets, PlainComesFirstAndTheChosenIsAmongThem) {
    const auto available = loopwise::available_instruction_sets();
    const loopwise::InstructionSet chosen = loopwise::chosen_instruction_set();
    std::printf("runs with %s of %zu sets\n", name(chosen), available.size());
    EXPECT_EQ(available.front(), loopwise::InstructionSet::plain);
    EXPECT_TRUE(std::is_sorted(available.begin(), available.end()));
    EXPECT_NE(std::find(available.begin(), available.end(), chosen), available.end());
    const char* const wanted = std::getenv("LOOPWISE_INSTRUCTIONS");
    EXPECT_EQ(std::string(name(chosen)), wanted != nullptr ? wanted : name(available.back()));
}

TEST(Measures, EveryInstructionSetFindsTheFarthest) {
    chains::Random random(22);
    for (const chains::Kind kind : chains::all_kinds) {
        std::vector<double> x, y, z;
        for (const ChainAtom& atom : chains::make(kind, 64, random))
            x.push_back(atom.x), y.push_back(atom.y), z.push_back(atom.z);
        for (std::size_t count = 0; count <= 64; count += loopwise::distance_lanes)
            for (const loopwise::InstructionSet set : loopwise::available_instruction_sets()) {
                const loopwise::Positions positions{x.data(), y.data(), z.data(), count};
                const double known = count == 64 ? 3.0 : 0.0;
                EXPECT_EQ(
                    loopwise::farthest_square(set)(positions, {1, 2, 3}, known),
                    loopwise::farthest_square(loopwise::InstructionSet::plain)(positions, {1, 2, 3}, known))
                    << name(set);
            }
    }
}

std::vector<int> cut(std::initializer_list<int> ids, int start, int end, const std::string& refused = "") {
    Chain chain = with_ids(ids);
    Capture printed;
    EXPECT_EQ(CutChain(chain, start, end), 0);
    EXPECT_EQ(printed.cerr.str(),
              refused.empty()
                  ? ""
                  : "Error while preparing components: You want to erase atoms which don't exist.\n");
    EXPECT_EQ(printed.clog.str(),
              refused.empty() ? "" : "One of components, " + refused + "\nWe take whole sequence.\n");
    std::vector<int> left;
    for (const ChainAtom& atom : chain) left.push_back(atom.id);
    return left;
}

TEST(Cut, KeepsTheStretchBetweenTwoIdentifiers) {
    EXPECT_EQ(cut({1, 2, 3, 4, 5, 6}, 3, 5), (std::vector{3, 4, 5}));
    EXPECT_EQ(cut({1, 2, 3, 4, 5, 6}, 5, 3), (std::vector{3, 4, 5}));
    EXPECT_EQ(cut({6, 5, 4, 3, 2, 1}, 3, 5), (std::vector{5, 4, 3}));
    EXPECT_EQ(cut({1, 2, 3}, 2, 2), std::vector{2});
    EXPECT_EQ(cut({4}, 4, 4), std::vector{4});
    EXPECT_EQ(cut({1, 2, 3, 7, 8, 9}, 4, 8), (std::vector{7, 8}));
    EXPECT_EQ(cut({1, 5, 99, 6, 10}, 5, 6), (std::vector{5, 99, 6}));
}

TEST(Cut, KeepsEverythingWhenItRefuses) {
    EXPECT_EQ(cut({}, 1, 2), std::vector<int>{});
    EXPECT_EQ(cut({1, 2, 9}, 0, 5, "chain[0].id: 1, chain.back().id: 9; Your start: 0, end: 5"),
              (std::vector{1, 2, 9}));
    EXPECT_EQ(cut({9, 2, -1}, 10, 2, "chain[0].id: 9, chain.back().id: -1; Your start: 10, end: 2"),
              (std::vector{9, 2, -1}));
    EXPECT_EQ(cut({1, 10, 5}, 4, 2, "chain[0].id: 1, chain.back().id: 5; Your start: 4, end: 2"),
              (std::vector{1, 10, 5}));
}

} // namespace
