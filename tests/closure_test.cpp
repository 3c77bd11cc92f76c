#include "closure/point_tables.hpp"
#include "support/capture.hpp"
#include "support/chains.hpp"

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

TEST(OnePointClosure, GivesEveryComponentItsOwnRow) {
    chains::Random random(2);
    const auto component = [&] { return chains::make(chains::Kind::tangle, 3, random); };
    Structure structure;
    for (int i = 0; i < 60; ++i) structure.push_back(component());
    const Structure before = structure;
    const double far = 2 * DiameterOfStructure(structure);
    ASSERT_EQ(CloseChains_1point(structure, 2), 0);
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < 60; ++i) {
        const PointR3 centre = CentreOfChain(before[i]), added = at(structure[i].back());
        EXPECT_NEAR(Dist(centre, added), far, 1e-9);
        EXPECT_EQ(structure[i].back().id, 4);
        for (std::size_t row = 0; row < 60; ++row)
            if (Dist({(added.x - centre.x) / far, (added.y - centre.y) / far, (added.z - centre.z) / far},
                     uniform[row]) < 1e-5)
                rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(std::unique(rows.begin(), rows.end()) - rows.begin(), 60);

    structure.push_back(component());
    std::srand(9);
    const int next = std::rand();
    std::srand(9);
    EXPECT_EQ(CloseChains_1point(structure, 2), -1);
    EXPECT_EQ(structure[0].size(), 4U);
    EXPECT_EQ(std::rand(), next);
}

TEST(OnePointClosure, WarnsOfEmptyInput) {
    Chain none;
    Structure no_component, hollow{{{1, 2, 3, 4}}, {}};
    Capture printed;
    EXPECT_EQ(CloseChain_1point(none, 2), 0);
    EXPECT_EQ(CloseChains_1point(no_component, 2), 0);
    EXPECT_EQ(CloseChains_1point(hollow, 2), 0);
    const std::string warning = "[WARNING] You are trying to CLOSE an EMPTY chain.\n";
    EXPECT_EQ(printed.clog.str(), warning + warning + warning);
    EXPECT_TRUE(none.empty() && hollow[0].size() == 1 && printed.cerr.str().empty());
}

} // namespace
