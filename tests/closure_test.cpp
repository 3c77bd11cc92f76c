#include "closure/point_tables.hpp"
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>

namespace {

using loopwise::fuleren;
using loopwise::uniform;

PointR3 at(const ChainAtom& atom) { return {atom.x, atom.y, atom.z}; }
double size(PointR3 p) { return Dist(p, {0, 0, 0}); }

template <class Table> PointR3 sum(const Table& table) {
    PointR3 total{0, 0, 0};
    for (const PointR3& p : table) total = {total.x + p.x, total.y + p.y, total.z + p.z};
    return total;
}

template <class Table> std::vector<double> distances_from(const Table& table, std::size_t row) {
    std::vector<double> result;
    for (std::size_t i = 0; i < table.size(); ++i)
        if (i != row) result.push_back(Dist(table[i], table[row]));
    std::sort(result.begin(), result.end());
    return result;
}

/// The first call of any closure or projection fills the tables and seeds from the clock; a death test
/// runs it in a process of its own, where nothing has done so before.
TEST(PointTables, AreFilledAndSeededByTheFirstCall) {
    const auto seeds = [](auto operation) {
        std::srand(77);
        operation();
        const int drawn = std::rand();
        std::srand(77);
        const bool untouched = std::rand() == drawn;
        bool from_clock = false;
        for (std::time_t t = std::time(nullptr); t > std::time(nullptr) - 9; --t) {
            std::srand(static_cast<unsigned>(t));
            from_clock = from_clock || std::rand() == drawn;
        }
        std::_Exit(from_clock && !untouched && fuleren[59].z == 0.721148 && uniform[399].y == 0.0521588 ? 7
                                                                                                        : 1);
    };
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    Chain none;
    Structure no_component;
    EXPECT_EXIT(seeds([&] { CloseChain_OUT(none, 2); }), testing::ExitedWithCode(7), "");
    EXPECT_EXIT(seeds([&] { CloseChains_OUT(no_component, 2); }), testing::ExitedWithCode(7), "");
    EXPECT_EXIT(seeds([&] { ProjectChain(none, 0, false); }), testing::ExitedWithCode(7), "");
}

TEST(PointTables, AreFilledAndSeededOnce) {
    FillFulerenData();
    std::srand(5);
    const int first = std::rand(), second = std::rand();
    std::srand(5);
    FillFulerenData();
    EXPECT_EQ(std::rand(), first);
    FillFulerenData();
    EXPECT_EQ(std::rand(), second);
    EXPECT_EQ(fuleren[0].x, -1.415441);
    EXPECT_EQ(fuleren[59].z, 0.721148);
    EXPECT_EQ(uniform[1].z, -0.254502);
    EXPECT_EQ(uniform[399].y, 0.0521588);
}

TEST(PointTables, FullereneHasItsNinetyBonds) {
    FillFulerenData();
    for (std::size_t i = 0; i < fuleren.size(); ++i) {
        EXPECT_TRUE(size(fuleren[i]) > 3.5283 && size(fuleren[i]) < 3.5304) << i;
        const std::vector<double> near = distances_from(fuleren, i);
        EXPECT_TRUE(near[0] >= 1.3886 && near[0] <= 1.3899 && near[1] >= 1.4422 && near[2] <= 1.4447 &&
                    near[3] > 1.6)
            << i;
    }
    const PointR3 total = sum(fuleren);
    EXPECT_LT(size(total) / 60, 1.4e-7);
}

/// A typing error in any digit of a row moves at least the sums.
TEST(PointTables, UniformIsSpreadEvenly) {
    FillFulerenData();
    double reciprocal = 0, mean = 0, nearest = 9, farthest = 0;
    for (std::size_t i = 0; i < uniform.size(); ++i) {
        EXPECT_NEAR(size(uniform[i]), 1, 8e-7) << i;
        const std::vector<double> others = distances_from(uniform, i);
        nearest = std::min(nearest, others.front());
        farthest = std::max(farthest, others.front());
        mean += others.front() / 400;
        for (const double d : others) reciprocal += 1 / d / 2;
        EXPECT_TRUE(i == 0 || Dist(uniform[i - 1], uniform[i]) > 0.35) << i;
        for (std::size_t j = 0; j < i && i < 60; ++j) EXPECT_GE(Dist(uniform[i], uniform[j]), 0.3402) << i;
    }
    EXPECT_NEAR(nearest, 0.16807, 5e-6);
    EXPECT_NEAR(farthest, 0.18925, 5e-6);
    EXPECT_NEAR(mean, 0.18035, 5e-6);
    EXPECT_NEAR(reciprocal, 75583.61, 5e-3);
    const PointR3 total = sum(uniform);
    EXPECT_NEAR(total.x, -0.0002479, 1e-12);
    EXPECT_NEAR(total.y, 0.00131313954, 1e-12);
    EXPECT_NEAR(total.z, 0.00207429, 1e-12);
}

TEST(CircleArc, StepsAlongTheShorterWay) {
    const Chain arc = GivePointsOnTheCircle({1, 0, 0}, {0, 1, 0}, {0, 0, 0}, 2, 10);
    ASSERT_EQ(arc.size(), 10U);
    for (int i = 0; i < 10; ++i) {
        const double angle = i < 9 ? 0.175 * i : std::acos(0.0);
        EXPECT_NEAR(Dist(at(arc[static_cast<std::size_t>(i)]), {2 * std::cos(angle), 2 * std::sin(angle), 0}),
                    0, 1e-14);
        EXPECT_EQ(arc[static_cast<std::size_t>(i)].id, 11 + i);
    }
    const Chain back = GivePointsOnTheCircle({0, 1, 0}, {1, 0, 0}, {0, 0, 0}, 2, 2147483646);
    EXPECT_NEAR(Dist(at(back.at(1)), {0.348216, 1.969453, 0}), 0, 1e-6);
    EXPECT_EQ(back.at(1).id, -2147483647 - 1);
    const auto atoms_on = [](double angle) {
        return GivePointsOnTheCircle({1, 0, 0}, {std::cos(angle), std::sin(angle), 0}, {0, 0, 0}, 1, 0)
            .size();
    };
    EXPECT_EQ(atoms_on(0.05), 1U);
    EXPECT_EQ(atoms_on(0.06), 2U);
    EXPECT_EQ(atoms_on(0.225), 3U); // by rounding, the last two at the end direction
    EXPECT_EQ(atoms_on(3.14), 19U);
}

/// The first atom of each arc is in the start direction to the last bit, and the last in the end direction.
TEST(CircleArc, LiesInEveryCoordinatePlane) {
    for (const auto& [from, to] :
         {std::pair{PointR3{0, 0, 5}, PointR3{5, 0, 5}}, {PointR3{0, 4, 0}, PointR3{0, 4, -4}}}) {
        const Chain arc = GivePointsOnTheCircle(from, to, {0, 0, 0}, 2, 0);
        ASSERT_EQ(arc.size(), 6U);
        EXPECT_NEAR(Dist(at(arc[0]), {0, from.y / 2, from.z / 2.5}), 0, 1e-15);
        EXPECT_NEAR(Dist(at(arc[5]), {to.x * 2 / size(to), to.y * 2 / size(to), to.z * 2 / size(to)}), 0,
                    1e-15);
        EXPECT_NEAR(Dist(at(arc[1]), at(arc[0])), 4 * std::sin(0.0875), 1e-15);
    }
}

TEST(CircleArc, IsEmptyOnlyWithoutAPlane) {
    const PointR3 c{1, 2, 3};
    const double nan = std::nan("");
    for (const PointR3 end : {PointR3{3, 4, 5}, PointR3{0, 1, 2}, c, PointR3{nan, 0, 0}})
        EXPECT_TRUE(GivePointsOnTheCircle({2, 3, 4}, end, c, 1, 0).empty());
    chains::Random random(7);
    for (int i = 0; i < 20000; ++i) { // coordinate planes and axes carry sines past 1 by rounding
        PointR3 a = random.direction(), b = random.direction();
        if (i % 2 == 0) a.x = b.x = 0;
        if (i % 3 == 0) b = {a.y * 0.1, -a.x * 0.1, 0};
        if (i % 10 == 5) a.z = b.z = 0;
        const double radius = random.between(-5, 5);
        const Chain arc = GivePointsOnTheCircle({c.x + a.x, c.y + a.y, c.z + a.z},
                                                {c.x + b.x, c.y + b.y, c.z + b.z}, c, radius, 0);
        ASSERT_TRUE(!arc.empty() && arc.size() <= 20) << i;
        const auto cosine = [&](const ChainAtom& p, PointR3 v) {
            return ((p.x - c.x) * v.x + (p.y - c.y) * v.y + (p.z - c.z) * v.z) / radius / size(v);
        };
        ASSERT_NEAR(cosine(arc.back(), b), 1, 1e-12);
        for (std::size_t k = 0; k < arc.size(); ++k) {
            ASSERT_NEAR(Dist(at(arc[k]), c), std::fabs(radius), 1e-9);
            const double chord = k == 0 ? 0 : Dist(at(arc[k - 1]), at(arc[k])) / 2 / std::fabs(radius);
            const double turn = 2 * std::asin(chord);
            ASSERT_TRUE(k == 0 || k + 1 == arc.size() ? turn < 0.2251 : std::fabs(turn - 0.175) < 1e-6)
                << turn;
        }
        ASSERT_TRUE(arc.size() == 1 || std::fabs(cosine(arc[0], a) - 1) < 1e-12);
    }
}

struct Pair {
    literal::Closure how;
    int (*chain)(Chain&, double);
    int (*structure)(Structure&, double);
};
const Pair closures[] = {
    {literal::Closure::one_point, CloseChain_1point, CloseChains_1point},
    {literal::Closure::direction, [](Chain& c, double) { return CloseChain_1direction(c); },
     [](Structure& s, double) { return CloseChains_1direction(s); }},
    {literal::Closure::two_points, CloseChain_2points, CloseChains_2points},
    {literal::Closure::outside, CloseChain_OUT, CloseChains_OUT},
};

/// Its result, its atoms to the last bit, and the state that it leaves std::rand() in.
void expect_literal(const Pair& closure, const Structure& before, bool alone, unsigned seed) {
    Structure ours = before, theirs = before;
    std::srand(seed);
    const int result = alone ? closure.chain(ours[0], 3) : closure.structure(ours, 3);
    const int next = std::rand();
    std::srand(seed);
    ASSERT_EQ(result, literal::close(theirs, closure.how, alone, 3));
    ASSERT_EQ(next, std::rand());
    for (std::size_t i = 0; i < before.size(); ++i)
        ASSERT_TRUE(chains::same_bits(ours[i], theirs[i])) << i << ": " << chains::text(before[i]);
}

TEST(Closures, EqualTheStepsWrittenDown) {
    FillFulerenData();
    chains::Random random(2);
    const Silence quiet;
    const auto make = [&](std::size_t components, chains::Kind kind, int shortest) {
        Structure structure(components);
        for (Chain& chain : structure) {
            chain = chains::make(kind, shortest + random.below(6), random);
            for (ChainAtom& atom : chain)
                atom.id = random.below(40) == 0 ? 2147483647 : atom.id - random.below(9);
        }
        return structure;
    };
    for (unsigned seed = 0; seed < 4000; ++seed) {
        const chains::Kind kind = chains::all_kinds[seed % 6]; // numbers that stay numbers
        for (const Pair& closure : closures) {
            expect_literal(closure, make(1, kind, seed % 3), true, seed);
            if (seed % 8 == 0) expect_literal(closure, make(seed % 7, kind, seed % 5), false, seed);
        }
    }
    const Chain no_plane{{1e17, 1e17, 1e17, 1}, {1e17, 1e17, 1e17, 2}, {1e17, 1e17, 1e17, 3}};
    for (const Pair& closure : closures) {
        for (const std::size_t components : {59U, 60U, 61U, 200U, 201U, 400U, 401U})
            expect_literal(closure, make(components, chains::Kind::tangle, 1), false, 1);
        const Structure around = make(2, chains::Kind::tangle, 4);
        expect_literal(closure, {around[0], no_plane, around[1]}, false, 1);
    }
}

TEST(Closures, OfSmallChains) {
    const Chain pair{{0, 0, 0, 9}, {3, 0, 0, 2}}, corner{{0, 0, 0, 1}, {2, 0, 0, 30}, {2, 2, 0, 3}};
    Chain shifted = pair, arched = corner;
    EXPECT_EQ(CloseChain_1direction_NoRandom(shifted, 399), 0);
    const Capture printed;
    for (const int row : {-1, 400, -2147483647 - 1})
        EXPECT_EQ(CloseChain_1direction_NoRandom(shifted, row), -1);
    EXPECT_TRUE(printed.silent());
    ASSERT_EQ(shifted.size(), 4U);
    const PointR3 u = uniform[399];
    EXPECT_NEAR(Dist(at(shifted[2]), {3 + 3.06 * u.x, 3.06 * u.y, 3.06 * u.z}), 0, 3e-6);
    EXPECT_NEAR(Dist(at(shifted[3]), {3.06 * u.x, 3.06 * u.y, 3.06 * u.z}), 0, 3e-6);
    EXPECT_TRUE(shifted[2].id == 3 && shifted[3].id == 4);
    EXPECT_EQ(CloseChain_OUT(arched, 2), 0);
    ASSERT_EQ(arched.size(), 18U);
    EXPECT_NEAR(Dist(at(arched[3]), {2.666667, 3.333333, 0}), 0, 1e-6);
    EXPECT_NEAR(Dist(at(arched[4]), {2.182014, 3.524748, 0}), 0, 1e-6);
    EXPECT_NEAR(Dist(at(arched[17]), {-1.333333, -0.666667, 0}), 0, 1e-6);
    EXPECT_TRUE(arched[3].id == 31 && arched[17].id == 45);
}

TEST(Closures, WarnOfEmptyInput) {
    Chain none;
    Structure no_component, hollow(500, {{1, 2, 3, 4}});
    hollow[499].clear();
    Capture printed;
    EXPECT_EQ(CloseChain_1point(none, 2) + CloseChain_1direction(none) +
                  CloseChain_1direction_NoRandom(none, 999) + CloseChain_2points(none, 2) +
                  CloseChain_OUT(none, 2),
              0);
    for (Structure* s : {&no_component, &hollow})
        EXPECT_EQ(CloseChains_1point(*s, 2) + CloseChains_1direction(*s) + CloseChains_2points(*s, 2) +
                      CloseChains_OUT(*s, 2),
                  0);
    std::string warnings;
    for (int i = 0; i < 5 + 2 * 4; ++i) warnings += "[WARNING] You are trying to CLOSE an EMPTY chain.\n";
    EXPECT_EQ(printed.clog.str(), warnings);
    EXPECT_TRUE(none.empty() && hollow[0].size() == 1 && printed.cerr.str().empty());
}

} // namespace
