#include "libloopwise.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

TEST(Comparisons, AreStrictOrInclusiveAtExactlyTheTolerance) {
    EXPECT_TRUE(!CompareEq(0.0, 1e-5) && CompareEq(0.0, std::nextafter(1e-5, 0)));
    EXPECT_TRUE(CompareGt(1e-5, 0.0) && !CompareGt(std::nextafter(1e-5, 0), 0.0));
    EXPECT_TRUE(!CompareGeq(0.0, 1e-5) && CompareGeq(std::nextafter(0.0, 1), 1e-5));
    for (const auto compare : {CompareEq, CompareGt, CompareGeq})
        EXPECT_FALSE(compare(nan, 1) || compare(1, nan) || compare(nan, nan));
}

int meet(std::array<PointR3, 5> p) { return intersection(p.data(), p.data() + 3); } // T0, T1, T2, S0, S1

TEST(Intersection, TellsInsideFromBoundary) {
    const PointR3 o{0, 0, 0}, x{3, 0, 0}, y{0, 3, 0}, far{90, 90, 0};
    const auto through = [&](double px, double py, double from, double to) {
        return meet({o, x, y, PointR3{px, py, from}, PointR3{px, py, to}});
    };
    EXPECT_EQ(through(1, 1, -1, 1), 1);
    for (const auto& [px, py] : {std::pair{1.5, 1.5}, {0, 0}, {1, 0}, {0, 1}}) EXPECT_EQ(through(px, py, -1, 1), 2);
    EXPECT_EQ(through(1, 1, 1e-6, 1) + through(1, 1, -1, -1e-6), 2 + 2);
    EXPECT_EQ(through(1, 1, 1e-3, 1) + through(1, 1, -1, -1e-3) + through(2, 2, -1, 1) + through(-1, 1, 0, 5), 0);
    // A determinant of exactly zero counts at any distance.
    EXPECT_EQ(meet({o, x, y, far, PointR3{91, 95, 0}}), 1);
    EXPECT_EQ(meet({o, x, y, PointR3{1, 2, 70}, PointR3{5, 6, 70}}), 1);
    EXPECT_EQ(meet({o, x, y, PointR3{7, 7, 7}, PointR3{7, 7, 7}}), 1);
    EXPECT_EQ(meet({o, o, y, far, PointR3{7, 7, 7}}), 1);
}

TEST(PlanarSegments, CrossOrTouch) {
    EXPECT_TRUE(TwoSegmentsCrossedSimple(0, 0, 2, 2, 0, 2, 2, 0));
    EXPECT_TRUE(TwoSegmentsCrossedSimple(0, 0, 1, 0, 1, 0, 2, 5));
    EXPECT_FALSE(TwoSegmentsCrossedSimple(0, 0, 1, 0, 2, 0, 3, 0));
    EXPECT_TRUE(TwoSegmentsCrossedSimple(0, 0, 2, 0, 1, 0, 3, 0));
    EXPECT_FALSE(TwoSegmentsCrossedSimple(0, 0, 1, 1, 0, 2, 2, 1.1));
    EXPECT_FALSE(TwoSegmentsCrossedSimple(0, 2, 2, 1.1, 0, 0, 1, 1));
    const PointR3 a{0, 0, 0}, b{4, 0, 0}, below{2, -1, 0}, on{2, 0, 0}; // each end alone on the other segment
    for (const auto& [p, q, r, t] :
         {std::array{a, b, below, on}, {a, b, on, below}, {below, on, a, b}, {on, below, a, b}})
        EXPECT_TRUE(TwoSegmentsCrossedSimple(p.x, p.y, q.x, q.y, r.x, r.y, t.x, t.y));
    EXPECT_TRUE(on_segment(3, 5, 1, 2, 1, 2) && on_segment(1, 5, 3, 2, 3, 5));
    for (const auto& [px, py] : {std::pair{3.0, 5.1}, {3.0, 1.9}, {0.9, 2.0}, {3.1, 2.0}})
        EXPECT_FALSE(on_segment(1, 5, 3, 2, px, py));
}

TEST(LinearAlgebra, OfWholeNumbers) {
    double rows[][3] = {{2, 3, 5}, {7, 11, 13}, {17, 19, 23}};
    EXPECT_EQ(ScalarProduct(rows[0], rows[1]), 112);
    EXPECT_EQ(Determinant(rows[0], rows[1], rows[2]), -78);
    EXPECT_EQ(det_segments(0, 0, 3, 1, 1, 5), 14);
}

bool same(PointR3 p, PointR3 q) { return p.x == q.x && p.y == q.y && p.z == q.z; }

TEST(Projection, UsesTheWholePartsOfTheDirection) {
    EXPECT_LT(Dist(ProjectPointF({1, 0, 0}, {-1.415441, 3.015027, -1.167954}), {-0.9486833, -0.0953463, -0.3015113}),
              1e-7);
    EXPECT_TRUE(same(ProjectPointF({1, 2, 3}, {0.9, -0.9, 5}), {1, 2, 3}));
    EXPECT_TRUE(same(ProjectPointF({1, 2, 3}, {nan, 0, -inf}), {1, 2, 3}));
    EXPECT_TRUE(same(ProjectPointF({1, 2, 3}, {2.7, 0, 0}), {2, 3, 1}));
    EXPECT_TRUE(same(ProjectPointF({1, 2, 3}, {inf, 0, 0}), {2, 3, 1}));
    EXPECT_LT(
        Dist(ProjectPointF({1, 2, 3}, {-1e300, -inf, -1e18}), {-1 / std::sqrt(2), 3 / std::sqrt(6), -6 / std::sqrt(3)}),
        1e-6);
}

TEST(Projection, TakesTheDirectionModuloSixty) {
    const Chain pair{{1, 2, 3, 1}, {4, 5, 6, 2}};
    for (const int along_z : {6, 23, 39, 57, -66}) // leaves the atoms as they are
        EXPECT_TRUE(same(ProjectChain(pair, along_z, false).at(0).end, {4, 5, 6}));
    EXPECT_TRUE(same(ProjectChain(pair, -2147483647 - 1, true).at(1).start, ProjectChain(pair, 8, true).at(1).start));
    EXPECT_EQ(ProjectChain(pair, 0, true).size() + ProjectChain(pair, 0, false).size(), 3U);
    EXPECT_TRUE(ProjectChain({pair[0]}, 0, true).empty());
}

} // namespace
