#include "support/chains.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

double gap(PointR3 p, double x, double y, double z) { return Dist(p, {x, y, z}); }

bool same(PointR3 p, PointR3 q) { return p.x == q.x && p.y == q.y && p.z == q.z; }

TEST(Projection, UsesTheWholePartsOfTheDirection) {
    EXPECT_LT(
        gap(ProjectPointF({1, 0, 0}, {-1.415441, 3.015027, -1.167954}), -0.9486833, -0.0953463, -0.3015113),
        1e-7);
    EXPECT_TRUE(same(ProjectPointF({1, 2, 3}, {0.9, -0.9, 5}), {1, 2, 3}));
    EXPECT_TRUE(same(ProjectPointF({1, 2, 3}, {std::nan(""), 0, -inf}), {1, 2, 3}));
    EXPECT_TRUE(same(ProjectPointF({1, 2, 3}, {2.7, 0, 0}), {2, 3, 1}));
    EXPECT_TRUE(same(ProjectPointF({1, 2, 3}, {inf, 0, 0}), {2, 3, 1}));
    EXPECT_LT(gap(ProjectPointF({1, 2, 3}, {-1e300, -inf, -1e18}), -1 / std::sqrt(2), 3 / std::sqrt(6),
                  -6 / std::sqrt(3)),
              1e-6);
}

TEST(Projection, IsEvaluatedInAFixedOrder) {
    chains::Random random(9);
    for (int i = 0; i < 1000; ++i) {
        const double x = random.between(-99, 99), y = random.between(-99, 99), z = random.between(-99, 99);
        const double a = 1 + random.below(9), b = -random.below(9), c = random.below(9) - 4,
                     s = a * a + b * b, t = s + c * c;
        ASSERT_TRUE(same(ProjectPointF({x, y, z}, {a, b, c}),
                         {(y * a + (-x) * b) / std::sqrt(s),
                          (s * z + ((-x) * a * c - c * (b * y))) / std::sqrt(s * t),
                          (z * c + (x * a + b * y)) / std::sqrt(t)}));
    }
}

TEST(Projection, IsARotation) {
    chains::Random random(8);
    for (int i = 0; i < 1000; ++i) {
        const PointR3 direction{random.between(-9, 9), random.between(-9, 9), random.between(-9, 9)};
        const PointR3 x = ProjectPointF({1, 0, 0}, direction), y = ProjectPointF({0, 1, 0}, direction),
                      z = ProjectPointF({0, 0, 1}, direction);
        const auto dot = [](PointR3 p, PointR3 q) { return p.x * q.x + p.y * q.y + p.z * q.z; };
        ASSERT_NEAR(dot(x, x) + dot(y, y) + dot(z, z), 3, 1e-12);
        ASSERT_NEAR(std::fabs(dot(x, y)) + std::fabs(dot(y, z)) + std::fabs(dot(z, x)), 0, 1e-12);
        ASSERT_NEAR(dot(x, {y.y * z.z - y.z * z.y, y.z * z.x - y.x * z.z, y.x * z.y - y.y * z.x}), 1, 1e-12);
    }
}

TEST(Projection, GivesOneEdgePerSegment) {
    const Chain chain{{1, 2, 3, 1}, {4, 5, 6, 2}, {9, 8, 8, 3}};
    for (const int index : {6, 23, 39, 57, -66}) { // directions along z leave the atoms as they are
        const std::vector<Edge> edges = ProjectChain(chain, index, true);
        ASSERT_EQ(edges.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            const ChainAtom a = chain[i], b = chain[(i + 1) % 3];
            EXPECT_TRUE(same(edges[i].start, {a.x, a.y, a.z}) && same(edges[i].end, {b.x, b.y, b.z}));
            EXPECT_TRUE(edges[i].annotations.empty() && edges[i].tag == 0);
        }
    }
    const auto start = [&](int index) { return ProjectChain(chain, index, false).at(0).start; };
    EXPECT_TRUE(same(start(7), start(67)) && same(start(7), start(-7)) && !same(start(7), start(8)));
    EXPECT_TRUE(same(start(-2147483647 - 1), start(8)));
    EXPECT_EQ(ProjectChain(chain, 0, false).size(), 2U);
    EXPECT_TRUE(ProjectChain({chain[0]}, 0, true).empty() && ProjectChain({}, 0, true).empty());
    static_assert(sizeof(EdgeAnnotation) == 16);
}

} // namespace
