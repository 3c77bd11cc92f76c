#include "src/closure/point_tables.hpp"
#include "support/capture.hpp"
#include "support/operations.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>

namespace {

PointR3 at(const ChainAtom& atom) { return {atom.x, atom.y, atom.z}; }

template <class Table> std::uint64_t digest(const Table& table) {
    operations::Digest digest;
    for (const PointR3& row : table) digest.add(row);
    return digest.value();
}

TEST(PointTables, HoldTheseRows) {
    FillFulerenData();
    EXPECT_EQ(digest(loopwise::closure::fullerene_directions), 0x694e'ff3f'7418'8cc2U);
    EXPECT_EQ(digest(loopwise::closure::uniform_directions), 0x54b5'e656'02ca'a1c4U);
}

/// The first call of any closure or projection seeds from the clock; a death test runs it in a process of its
/// own, where nothing has done so before.
TEST(PointTables, AreSeededFromTheClockByTheFirstCallOnly) {
    const auto seeds_once = [](auto operation) {
        std::srand(77);
        operation();
        const int drawn = std::rand();
        std::srand(77);
        bool right = std::rand() != drawn, from_clock = false;
        operation();
        const int next = std::rand();
        std::srand(77);
        right = right && std::rand() != next && std::rand() == next;
        for (std::time_t t = std::time(nullptr); t > std::time(nullptr) - 9; --t) {
            std::srand(static_cast<unsigned>(t));
            from_clock = from_clock || std::rand() == drawn;
        }
        std::_Exit(right && from_clock ? 7 : 1);
    };
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    Chain none;
    Structure no_component;
    EXPECT_EXIT(seeds_once([] { FillFulerenData(); }), testing::ExitedWithCode(7), "");
    EXPECT_EXIT(seeds_once([&] { CloseChain_OUT(none, 2); }), testing::ExitedWithCode(7), "");
    EXPECT_EXIT(seeds_once([&] { CloseChains_OUT(no_component, 2); }), testing::ExitedWithCode(7), "");
    EXPECT_EXIT(seeds_once([&] { ProjectChain(none, 0, false); }), testing::ExitedWithCode(7), "");
}

TEST(CircleArc, StepsAlongTheShorterWay) {
    const Chain arc = GivePointsOnTheCircle({1, 0, 0}, {0, 1, 0}, {0, 0, 0}, 2, 10);
    ASSERT_EQ(arc.size(), 10U);
    for (std::size_t i = 0; i < 10; ++i) {
        const double angle = i < 9 ? 0.175 * static_cast<double>(i) : std::acos(0.0);
        EXPECT_NEAR(Dist(at(arc[i]), {2 * std::cos(angle), 2 * std::sin(angle), 0}), 0, 1e-14);
        EXPECT_EQ(arc[i].id, 11 + static_cast<int>(i));
    }
    const Chain back = GivePointsOnTheCircle({0, 1, 0}, {1, 0, 0}, {0, 0, 0}, 2, 2147483646);
    EXPECT_NEAR(Dist(at(back.at(1)), {0.348216, 1.969453, 0}), 0, 1e-6);
    EXPECT_EQ(back.at(1).id, -2147483647 - 1);
    const auto atoms_on = [](double angle) {
        return GivePointsOnTheCircle({1, 0, 0}, {std::cos(angle), std::sin(angle), 0}, {0, 0, 0}, 1, 0).size();
    };
    EXPECT_EQ(atoms_on(0.05), 1U);
    EXPECT_EQ(atoms_on(0.06), 2U);
    EXPECT_EQ(atoms_on(0.225), 3U); // by rounding, the last two at the end direction
    EXPECT_EQ(atoms_on(3.14), 19U);
}

TEST(CircleArc, IsEmptyOnlyWithoutAPlane) {
    const PointR3 c{1, 2, 3};
    for (const PointR3 end : {PointR3{3, 4, 5}, PointR3{0, 1, 2}, c, PointR3{std::nan(""), 0, 0}})
        EXPECT_TRUE(GivePointsOnTheCircle({2, 3, 4}, end, c, 1, 0).empty());
}

TEST(Closures, OfSmallChains) {
    Chain shifted{{0, 0, 0, 9}, {3, 0, 0, 2}}, arched{{0, 0, 0, 1}, {2, 0, 0, 30}, {2, 2, 0, 3}}, none;
    EXPECT_EQ(CloseChain_1direction_NoRandom(shifted, 399), 0);
    ASSERT_EQ(shifted.size(), 4U);
    const PointR3 u = loopwise::closure::uniform_directions[399];
    EXPECT_NEAR(Dist(at(shifted[2]), {3 + 3.06 * u.x, 3.06 * u.y, 3.06 * u.z}), 0, 3e-6);
    EXPECT_NEAR(Dist(at(shifted[3]), {3.06 * u.x, 3.06 * u.y, 3.06 * u.z}), 0, 3e-6);
    EXPECT_TRUE(shifted[2].id == 3 && shifted[3].id == 4);
    EXPECT_EQ(CloseChain_OUT(arched, 2), 0);
    ASSERT_EQ(arched.size(), 18U);
    EXPECT_NEAR(Dist(at(arched[3]), {2.666667, 3.333333, 0}), 0, 1e-6);
    EXPECT_NEAR(Dist(at(arched[17]), {-1.333333, -0.666667, 0}), 0, 1e-6);
    EXPECT_TRUE(arched[3].id == 31 && arched[17].id == 45);
    Capture printed;
    for (const int row : {-1, 400, -2147483647 - 1}) EXPECT_EQ(CloseChain_1direction_NoRandom(shifted, row), -1);
    EXPECT_TRUE(printed.silent() && shifted.size() == 4);
    EXPECT_EQ(CloseChain_1direction_NoRandom(none, 999), 0);
    EXPECT_EQ(printed.clog.str(), "[WARNING] You are trying to CLOSE an EMPTY chain.\n");
}

} // namespace
