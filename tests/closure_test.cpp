#include "closure/point_tables.hpp"
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

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
    double reciprocal = 0, mean = 0, nearest = 9, farthest = 0, to_opposite = 9;
    for (std::size_t i = 0; i < uniform.size(); ++i) {
        EXPECT_NEAR(size(uniform[i]), 1, 8e-7) << i;
        const std::vector<double> others = distances_from(uniform, i);
        nearest = std::min(nearest, others.front());
        farthest = std::max(farthest, others.front());
        mean += others.front() / 400;
        for (const double d : others) reciprocal += 1 / d / 2;
        to_opposite = std::min(to_opposite, std::sqrt(std::max(0.0, 4 - others.back() * others.back())));
        EXPECT_TRUE(i == 0 || Dist(uniform[i - 1], uniform[i]) > 0.35) << i;
        for (std::size_t j = 0; j < i && i < 60; ++j) EXPECT_GE(Dist(uniform[i], uniform[j]), 0.3402) << i;
    }
    EXPECT_NEAR(nearest, 0.16807, 5e-6);
    EXPECT_NEAR(farthest, 0.18925, 5e-6);
    EXPECT_NEAR(mean, 0.18035, 5e-6);
    EXPECT_NEAR(reciprocal, 75583.61, 5e-3);
    EXPECT_GT(to_opposite, 0.0145);
    std::array<int, 9> with_neighbours{};
    for (std::size_t i = 0; i < uniform.size(); ++i) {
        const std::vector<double> others = distances_from(uniform, i);
        const auto end = std::lower_bound(others.begin(), others.end(), 1.25 * mean);
        ++with_neighbours.at(static_cast<std::size_t>(end - others.begin()));
    }
    EXPECT_EQ(with_neighbours, (std::array{0, 0, 0, 0, 1, 39, 359, 1, 0}));
    const PointR3 total = sum(uniform);
    EXPECT_NEAR(total.x, -0.0002479, 1e-12);
    EXPECT_NEAR(total.y, 0.00131313954, 1e-12);
    EXPECT_NEAR(total.z, 0.00207429, 1e-12);
}

TEST(OnePointClosure, AppendsOneFarAtom) {
    FillFulerenData();
    Chain chain{{0, 0, 0, 5}, {2, 0, 0, 9}, {1, 0, 0, 2}}, one{{1, 2, 3, 2147483647}};
    std::srand(1);
    const PointR3 u = uniform[static_cast<std::size_t>(std::rand() % 400)];
    const int next = std::rand();
    std::srand(1);
    EXPECT_EQ(CloseChain_1point(chain, 3), 0);
    EXPECT_EQ(std::rand(), next);
    const double length = std::sqrt(u.x * u.x + u.y * u.y + u.z * u.z);
    const Chain expected{{0, 0, 0, 5},
                         {2, 0, 0, 9},
                         {1, 0, 0, 2},
                         {1 + u.x * 3 / length, 0 + u.y * 3 / length, 0 + u.z * 3 / length, 3}};
    EXPECT_TRUE(chains::same_bits(chain, expected));
    EXPECT_EQ(CloseChain_1point(one, 7), 0);
    EXPECT_TRUE(chains::same_bits(one, {{1, 2, 3, 2147483647}, {1, 2, 3, -2147483647 - 1}}));
}

/// The next std::rand() tells how many numbers an operation drew since the seed.
template <class Operation> int next_after(unsigned seed, Operation operation) {
    std::srand(seed);
    operation();
    return std::rand();
}
int draws(unsigned seed, int next) {
    std::srand(seed);
    for (int count = 0; count < 10000; ++count)
        if (std::rand() == next) return count;
    return -1;
}

Structure tangles(std::size_t components) {
    chains::Random random(2);
    Structure structure(components);
    for (Chain& chain : structure) chain = chains::make(chains::Kind::tangle, 4, random);
    return structure;
}

/// The rows that an operation must have taken: what it drew, without what was taken before.
std::vector<int> distinct_rows(unsigned seed, std::size_t count, int limit) {
    std::vector<int> rows;
    std::srand(seed);
    while (rows.size() < count) {
        const int row = std::rand() % limit;
        if (std::find(rows.begin(), rows.end(), row) == rows.end()) rows.push_back(row);
    }
    return rows;
}

PointR3 along(PointR3 from, int row, double distance) {
    const PointR3 u = uniform[static_cast<std::size_t>(row)];
    const double length = std::sqrt(u.x * u.x + u.y * u.y + u.z * u.z);
    return {from.x + u.x * distance / length, from.y + u.y * distance / length,
            from.z + u.z * distance / length};
}

void expect_at(const ChainAtom& atom, PointR3 p, int id) {
    EXPECT_TRUE(chains::same_bits({atom}, {{p.x, p.y, p.z, id}})) << atom.id << " for " << id;
}

TEST(OnePointClosure, GivesEveryComponentItsOwnRow) {
    FillFulerenData();
    const Structure before = tangles(60);
    Structure structure = before;
    const int next = next_after(3, [&] { EXPECT_EQ(CloseChains_1point(structure, 2), 0); });
    const std::vector<int> rows = distinct_rows(3, 60, 60);
    EXPECT_EQ(std::rand(), next);
    for (std::size_t i = 0; i < 60; ++i)
        expect_at(structure[i].back(),
                  along(CentreOfChain(before[i]), rows[i], 2 * DiameterOfStructure(before)), 5);
}

TEST(DirectionClosure, ShiftsBothEnds) {
    FillFulerenData();
    const Chain pair{{0, 0, 0, 9}, {3, 0, 0, 2}};
    const double shift = 1.02 * 3.0;
    for (const int row : {0, 1, 60, 399}) {
        Chain chain = pair;
        EXPECT_EQ(draws(4, next_after(4, [&] { EXPECT_EQ(CloseChain_1direction_NoRandom(chain, row), 0); })),
                  0);
        ASSERT_EQ(chain.size(), 4U);
        expect_at(chain[2], along({3, 0, 0}, row, shift), 3);
        expect_at(chain[3], along({0, 0, 0}, row, shift), 4);
    }
    Chain random = pair, chosen = pair;
    EXPECT_EQ(draws(8, next_after(8, [&] { EXPECT_EQ(CloseChain_1direction(random), 0); })), 1);
    std::srand(8);
    CloseChain_1direction_NoRandom(chosen, std::rand() % 400);
    EXPECT_TRUE(chains::same_bits(random, chosen));
    for (const int row : {-1, 400, -2147483647 - 1})
        EXPECT_EQ(CloseChain_1direction_NoRandom(chosen, row), -1);
    EXPECT_EQ(chosen.size(), 4U);
}

TEST(DirectionClosure, MeasuresTheStructureAnewForEveryComponent) {
    FillFulerenData();
    Structure structure = tangles(30), expected = structure;
    const int next = next_after(6, [&] { EXPECT_EQ(CloseChains_1direction(structure), 0); });
    EXPECT_EQ(next_after(6, [&] { literal::close_in_directions(expected); }), next);
    for (std::size_t i = 0; i < 30; ++i) EXPECT_TRUE(chains::same_bits(structure[i], expected[i])) << i;
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

TEST(OutsideClosure, FollowsTheArcFromLastToFirst) {
    Chain chain{{0, 0, 0, 1}, {2, 0, 0, 30}, {2, 2, 0, 3}};
    EXPECT_EQ(CloseChain_OUT(chain, 2), 0);
    ASSERT_EQ(chain.size(), 18U);
    EXPECT_NEAR(Dist(at(chain[3]), {2.666667, 3.333333, 0}), 0, 1e-6);
    EXPECT_NEAR(Dist(at(chain[4]), {2.182014, 3.524748, 0}), 0, 1e-6);
    EXPECT_NEAR(Dist(at(chain[17]), {-1.333333, -0.666667, 0}), 0, 1e-6);
    EXPECT_TRUE(chain[3].id == 31 && chain[17].id == 45);
    const Capture printed;
    Chain two{{0, 0, 0, 1}, {1, 2, 3, 2}}, negative{{0, 0, 0, -7}, {2, 0, 0, -4}, {2, 2, 0, -9}};
    EXPECT_EQ(CloseChain_OUT(two, 2), -1);
    EXPECT_EQ(two.size(), 2U);
    EXPECT_EQ(CloseChain_OUT(negative, 2), 0);
    EXPECT_EQ(negative[3].id, -3);
    Structure structure{tangles(1)[0], two, tangles(1)[0]};
    EXPECT_EQ(CloseChains_OUT(structure, 2), -1);
    EXPECT_TRUE(structure[0].size() > 4 && structure[1].size() == 2 && structure[2].size() == 4);
    EXPECT_TRUE(printed.silent());
}

/// Replays the draws and builds the arcs from the rows that they mean.
TEST(TwoPointClosure, TakesTheRowsThatItDraws) {
    FillFulerenData();
    const auto arc = [](const Chain& chain, int from, int to, double radius, int id) {
        const PointR3 c = CentreOfChain(chain), u = uniform[static_cast<std::size_t>(from)],
                      v = uniform[static_cast<std::size_t>(to)];
        return GivePointsOnTheCircle({c.x + u.x, c.y + u.y, c.z + u.z}, {c.x + v.x, c.y + v.y, c.z + v.z}, c,
                                     radius, id);
    };
    int redrawn = 0;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        Chain chain{{0, 0, 0, -3}, {1, 2, 3, -8}, {5, 0, 1, -5}}, expected = chain;
        const int next = next_after(seed, [&] { EXPECT_EQ(CloseChain_2points(chain, 3), 0); });
        std::srand(seed);
        const int from = std::rand() % 400;
        int to = std::rand() % 400;
        for (; to == from; ++redrawn) to = std::rand() % 60;
        ASSERT_EQ(std::rand(), next);
        const Chain added = arc(expected, from, to, RadiusOfChain(expected) * 3, -3);
        expected.insert(expected.end(), added.begin(), added.end());
        ASSERT_TRUE(chains::same_bits(chain, expected));
    }
    EXPECT_GT(redrawn, 0);

    Structure structure = tangles(200), before = structure;
    std::srand(1);
    EXPECT_EQ(CloseChains_2points(structure, 2), 0);
    const std::vector<int> rows = distinct_rows(1, 400, 400);
    int id = 4;
    for (std::size_t i = 0; i < 200; ++i) {
        const Chain added = arc(before[i], rows[2 * i], rows[2 * i + 1], DiameterOfStructure(before) * 2, id);
        id = added.back().id;
        EXPECT_TRUE(chains::same_bits(Chain(structure[i].begin() + 4, structure[i].end()), added)) << i;
    }
    Chain far{{1e17, 1e17, 1e17, 1}, {1e17, 1e17, 1e17, 2}};
    EXPECT_EQ(CloseChain_2points(far, 2), -1);
}

TEST(Closures, RefuseTooManyComponentsWithoutDrawing) {
    FillFulerenData();
    const auto refuses = [](std::size_t components, auto operation) {
        Structure structure = tangles(components);
        EXPECT_EQ(draws(9, next_after(9, [&] { EXPECT_EQ(operation(structure), -1); })), 0);
        for (const Chain& chain : structure) EXPECT_EQ(chain.size(), 4U);
    };
    refuses(61, [](Structure& s) { return CloseChains_1point(s, 2); });
    refuses(401, [](Structure& s) { return CloseChains_1direction(s); });
    refuses(201, [](Structure& s) { return CloseChains_2points(s, 2); });
}

TEST(Closures, WarnOfEmptyInput) {
    Chain none;
    Structure no_component, hollow = tangles(500);
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
    EXPECT_TRUE(none.empty() && hollow[0].size() == 4 && printed.cerr.str().empty());
}

} // namespace
