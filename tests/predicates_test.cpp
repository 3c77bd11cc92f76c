#include "support/chains.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

#include <array>

namespace {

using Points = std::array<PointR3, 5>; // T0, T1, T2, S0, S1

int meet(Points p) { return intersection(p.data(), p.data() + 3); }

TEST(Intersection, TellsInsideFromBoundary) {
    const PointR3 o{0, 0, 0}, x{3, 0, 0}, y{0, 3, 0};
    const auto through = [&](double px, double py, double from, double to) {
        return meet({o, x, y, PointR3{px, py, from}, PointR3{px, py, to}});
    };
    EXPECT_EQ(through(1, 1, -1, 1), 1);
    EXPECT_EQ(through(1.5, 1.5, -1, 1), 2);
    EXPECT_EQ(through(0, 0, -1, 1), 2);
    EXPECT_EQ(through(1, 0, -1, 1), 2);
    EXPECT_EQ(through(0, 1, -1, 1), 2);
    EXPECT_EQ(through(2, 2, -1, 1), 0);
    EXPECT_EQ(through(1, 1, 1e-6, 1), 2);
    EXPECT_EQ(through(1, 1, 1e-3, 1), 0);
    EXPECT_EQ(through(1, 1, -1, -1e-6), 2);
    EXPECT_EQ(through(1, 1, -1, -1e-3), 0);
    EXPECT_EQ(through(-1, 1, 0, 5), 0);
}

TEST(Intersection, CountsAnExactZeroDeterminantAtAnyDistance) {
    const PointR3 o{0, 0, 0}, x{1, 0, 0}, y{0, 1, 0}, far{90, 90, 0};
    EXPECT_EQ(meet({o, x, y, far, PointR3{91, 95, 0}}), 1);
    EXPECT_EQ(meet({o, x, y, PointR3{1, 2, 70}, PointR3{5, 6, 70}}), 1);
    EXPECT_EQ(meet({o, x, y, PointR3{7, 7, 7}, PointR3{7, 7, 7}}), 1);
    EXPECT_EQ(meet({o, o, y, far, PointR3{7, 7, 7}}), 1);
}

/// The sign of t, u and v relative to their ranges, by Cramer's rule on whole numbers: exact.
struct Exact {
    long long d, t, u, v;

    explicit Exact(const Points& p) {
        const auto column = [](PointR3 a, PointR3 b) {
            return std::array<long long, 3>{static_cast<long long>(a.x - b.x),
                                            static_cast<long long>(a.y - b.y),
                                            static_cast<long long>(a.z - b.z)};
        };
        const auto a = column(p[3], p[4]), b = column(p[1], p[0]), c = column(p[2], p[0]),
                   r = column(p[3], p[0]);
        const auto det = [](const auto& q, const auto& w, const auto& e) {
            return q[0] * (w[1] * e[2] - w[2] * e[1]) - w[0] * (q[1] * e[2] - q[2] * e[1]) +
                   e[0] * (q[1] * w[2] - q[2] * w[1]);
        };
        d = det(a, b, c), t = det(r, b, c), u = det(a, r, c), v = det(a, b, r);
        if (d < 0) d = -d, t = -t, u = -u, v = -v;
    }
    int contact() const {
        if (d == 0) return 1;
        if (t < 0 || t > d || u < 0 || v < 0 || u + v > d) return 0;
        return t > 0 && t < d && u > 0 && v > 0 && u + v < d ? 1 : 2;
    }
};

TEST(Intersection, AgreesWithWholeNumbers) {
    chains::Random random(3);
    std::array<int, 3> seen{};
    for (int i = 0; i < 200000; ++i) {
        const int half = i % 2 == 0 ? 2 : 15;
        Points p;
        for (PointR3& q : p)
            q = {1.0 * random.below(2 * half + 1) - half, 1.0 * random.below(2 * half + 1) - half,
                 1.0 * random.below(2 * half + 1) - half};
        const int known = Exact(p).contact();
        // Rounding an edge case by a whole turn of the table is what the tolerance is for: t, u and v
        // are ratios of numbers far below 1e5, so nothing but exact contact lies within it.
        ASSERT_EQ(meet(p), known) << i;
        ++seen[static_cast<std::size_t>(known)];
    }
    EXPECT_GT(std::min({seen[0], seen[1], seen[2]}), 5000);
}

TEST(Intersection, EqualsTheTableOfConditions) {
    chains::Random random(4);
    for (const chains::Kind kind : chains::all_kinds)
        for (int i = 0; i < 20000; ++i) {
            const Chain chain = chains::make(kind, 5, random);
            Points p;
            for (std::size_t k = 0; k < p.size(); ++k) p[k] = {chain[k].x, chain[k].y, chain[k].z};
            if (i % 4 == 0) { // an end of the segment within some tolerances of the triangle
                const double u = random.between(-0.2, 1.2), v = random.between(-0.2, 1.2 - u),
                             e = random.between(-3, 3) * EPS;
                const auto mix = [&](double a, double b, double c) {
                    return a + u * (b - a) + v * (c - a) + e;
                };
                p[3] = {mix(p[0].x, p[1].x, p[2].x), mix(p[0].y, p[1].y, p[2].y),
                        mix(p[0].z, p[1].z, p[2].z)};
            }
            ASSERT_EQ(meet(p), literal::intersection(p.data(), p.data() + 3)) << chains::text(chain);
        }
}

TEST(PlanarSegments, CrossOrTouch) {
    EXPECT_TRUE(TwoSegmentsCrossedSimple(0, 0, 2, 2, 0, 2, 2, 0));
    EXPECT_TRUE(TwoSegmentsCrossedSimple(0, 0, 1, 0, 1, 0, 2, 5));
    EXPECT_FALSE(TwoSegmentsCrossedSimple(0, 0, 1, 0, 2, 0, 3, 0));
    EXPECT_TRUE(TwoSegmentsCrossedSimple(0, 0, 2, 0, 1, 0, 3, 0));
    EXPECT_FALSE(TwoSegmentsCrossedSimple(0, 0, 1, 1, 0, 2, 2, 1.1));
    const PointR3 a{0, 0, 0}, b{4, 0, 0}, below{2, -1, 0}, on{2, 0, 0}; // each end alone on the other segment
    for (const auto& [p, q, r, t] :
         {std::array{a, b, below, on}, {a, b, on, below}, {below, on, a, b}, {on, below, a, b}})
        EXPECT_TRUE(TwoSegmentsCrossedSimple(p.x, p.y, q.x, q.y, r.x, r.y, t.x, t.y));
    EXPECT_TRUE(on_segment(3, 5, 1, 2, 1, 2));
    EXPECT_TRUE(on_segment(1, 5, 3, 2, 3, 5));
    EXPECT_FALSE(on_segment(1, 5, 3, 2, 3, 5.0001));
}

TEST(LinearAlgebra, IsEvaluatedInAFixedOrder) {
    double a[] = {1e16, 1, -1e16}, one[] = {1, 1, 1};
    EXPECT_EQ(ScalarProduct(a, one), (1e16 + 1) - 1e16);
    chains::Random random(5);
    for (int i = 0; i < 200; ++i) {
        double c[6];
        for (double& x : c) x = random.between(-9, 9);
        const auto [x1, y1, x2, y2, x3, y3] = c;
        EXPECT_EQ(det_segments(x1, y1, x2, y2, x3, y3),
                  x1 * y2 + y1 * x3 + x2 * y3 - x3 * y2 - x1 * y3 - x2 * y1);
    }
    double rows[][3] = {{2, 3, 5}, {7, 11, 13}, {17, 19, 23}};
    EXPECT_EQ(Determinant(rows[0], rows[1], rows[2]), -78);
    double big[][3] = {{1e8 + 1, 3, 1e7}, {1e4 + 7, 1e8 + 9, 7e6}, {5e7 + 3, 1e6 + 1, 1.5e8}};
    const double* const p = big[0];
    const double* const q = big[1];
    const double* const r = big[2];
    const double expected = (p[1] * q[2] * r[0] + (p[0] * q[1] * r[2] + p[2] * q[0] * r[1])) -
                            ((p[0] * q[2] * r[1] + p[2] * q[1] * r[0]) + p[1] * q[0] * r[2]);
    EXPECT_EQ(Determinant(big[0], big[1], big[2]), expected);
}

} // namespace
