#include "src/model/diameter.hpp"
#include "support/capture.hpp"
#include "support/chains.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

using Ids = std::vector<int>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

Chain with_ids(const Ids& ids) {
    Chain chain;
    for (const int id : ids) chain.push_back({1.0 * id, 0, 0, id});
    return chain;
}

TEST(Identifiers, AreAtLeastMinusOneAndTakenFromEveryComponent) {
    Chain increasing = with_ids({3, 9, 4}), negative = with_ids({-5, -7}), none;
    EXPECT_EQ(maxIdChain(increasing), 9);
    EXPECT_EQ(maxIdChain(negative), -1);
    Structure two{increasing, with_ids({40, 2})}, hollow{increasing, none}, no_component;
    EXPECT_EQ(maxIdComps(two), 40);
    EXPECT_EQ(maxIdComps(no_component), -1);
    EXPECT_TRUE(!IsEmptyStructure(two) && IsEmptyStructure(hollow) && IsEmptyStructure(no_component));
}

TEST(Measures, OfSmallChains) {
    const Chain none, pair{{0, 0, 0, 1}, {2, 4, 6, 2}}, line{{0, 0, 0, 1}, {10, 0, 0, 2}, {5, 0, 0, 3}},
        off_centre{{0, 0, 0, 1}, {0, 0, 0, 2}, {3, 0, 0, 3}}, odd{{0, 0, 0, 1}, {nan, 0, 0, 2}, {3, 4, 0, 3}};
    EXPECT_EQ(Dist(CentreOfChain(none), {0, 0, 0}) + Dist(CentreOfChain(pair), {1, 2, 3}), 0);
    EXPECT_EQ(RadiusOfChain(none), 0);
    EXPECT_EQ(RadiusOfChain(off_centre), 2);
    EXPECT_EQ(DiameterOfChain(none), 0);
    EXPECT_EQ(DiameterOfChain(line), 10);
    EXPECT_EQ(DiameterOfStructure({none, none}), 0);
    EXPECT_EQ(DiameterOfStructure({{{0, 0, 0, 1}}, none, {{0, 0, 3, 1}}}), 3);
    EXPECT_EQ(DiameterOfChain(odd), 5); // what is not a number does not count
    EXPECT_EQ(RadiusOfChain(odd), 0);
    EXPECT_EQ(DiameterOfChain({{inf, 0, 0, 1}, {inf, 0, 0, 2}, {0, 0, 0, 3}}), inf);
    EXPECT_EQ(CentreOfChain({{1e16, 0, 0, 1}, {1, 0, 0, 2}, {1, 0, 0, 3}}).x, ((1e16 + 1) + 1) / 3);
    // Squares that have lost their digits.
    EXPECT_EQ(DiameterOfChain({{1.1e-162, 0, 0, 1}, {-3.9e-162, 0, 0, 2}, {1.3e-162, 0, 0, 3}, {-4e-162, 0, 0, 4}}),
              Dist({1.3e-162, 0, 0}, {-4e-162, 0, 0}));
}

TEST(Measures, EveryKernelFindsTheFarthest) {
    chains::Random random(22);
    for (const chains::Kind kind : chains::all_kinds) {
        std::vector<double> x, y, z;
        for (const ChainAtom& atom : chains::make(kind, 64, random))
            x.push_back(atom.x), y.push_back(atom.y), z.push_back(atom.z);
        for (std::size_t count = 0; count <= 64; count += loopwise::model::distance_lanes)
            for (const loopwise::model::InstructionSet set : loopwise::model::available_instruction_sets()) {
                const loopwise::model::Positions positions{x.data(), y.data(), z.data(), count};
                const double known = count == 64 ? 3.0 : 0.0;
                EXPECT_EQ(loopwise::model::farthest_square(set)(positions, {1, 2, 3}, known),
                          loopwise::model::farthest_square(loopwise::model::InstructionSet::plain)(positions, {1, 2, 3},
                                                                                                   known))
                    << name(set);
            }
    }
}

/// The name of the version that runs is printed; LOOPWISE_INSTRUCTIONS chooses another.
TEST(InstructionSets, PlainComesFirstAndTheChosenIsAmongThem) {
    const auto available = loopwise::model::available_instruction_sets();
    const loopwise::model::InstructionSet chosen = loopwise::model::chosen_instruction_set();
    std::printf("runs with %s of %zu sets\n", name(chosen), available.size());
    EXPECT_EQ(available.front(), loopwise::model::InstructionSet::plain);
    EXPECT_TRUE(std::is_sorted(available.begin(), available.end()));
    EXPECT_NE(std::find(available.begin(), available.end(), chosen), available.end());
    const char* const wanted = std::getenv("LOOPWISE_INSTRUCTIONS");
    EXPECT_EQ(std::string(name(chosen)), wanted != nullptr ? wanted : name(available.back()));
}

/// What is left of the atoms, and what the refusal says of the chain.
std::pair<Ids, std::string> cut(const Ids& ids, int start, int end) {
    Chain chain = with_ids(ids);
    Capture printed;
    EXPECT_EQ(CutChain(chain, start, end), 0);
    Ids left;
    for (const ChainAtom& atom : chain) left.push_back(atom.id);
    return {left, printed.cerr.str() + printed.clog.str()};
}

TEST(Cut, KeepsTheStretchBetweenTwoIdentifiers) {
    const auto stretch = [](const Ids& left) { return std::pair{left, std::string()}; };
    EXPECT_EQ(cut({1, 2, 3, 4, 5, 6}, 3, 5), stretch({3, 4, 5}));
    EXPECT_EQ(cut({1, 2, 3, 4, 5, 6}, 5, 3), stretch({3, 4, 5}));
    EXPECT_EQ(cut({6, 5, 4, 3, 2, 1}, 3, 5), stretch({5, 4, 3}));
    EXPECT_EQ(cut({1, 2, 3}, 2, 2), stretch({2}));
    EXPECT_EQ(cut({1, 2, 3}, 1, 3), stretch({1, 2, 3}));
    EXPECT_EQ(cut({1, 2, 3, 7, 8, 9}, 4, 8), stretch({7, 8}));
    EXPECT_EQ(cut({1, 5, 99, 6, 10}, 5, 6), stretch({5, 99, 6}));
    EXPECT_EQ(cut({}, 1, 2), stretch({}));
}

TEST(Cut, KeepsEverythingWhenItRefuses) {
    const auto all = [](const Ids& left, const std::string& of_chain) {
        return std::pair{left, "Error while preparing components: You want to erase atoms which don't exist.\n"
                               "One of components, chain[0].id: " +
                                   of_chain + "\nWe take whole sequence.\n"};
    };
    EXPECT_EQ(cut({1, 2, 9}, 0, 5), all({1, 2, 9}, "1, chain.back().id: 9; Your start: 0, end: 5"));
    EXPECT_EQ(cut({9, 2, -1}, 10, 2), all({9, 2, -1}, "9, chain.back().id: -1; Your start: 10, end: 2"));
    EXPECT_EQ(cut({9, 2, -1}, 2, -2), all({9, 2, -1}, "9, chain.back().id: -1; Your start: 2, end: -2"));
    EXPECT_EQ(cut({1, 10, 5}, 4, 2), all({1, 10, 5}, "1, chain.back().id: 5; Your start: 4, end: 2"));
}

} // namespace
