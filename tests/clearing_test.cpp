#include "reduce/clearing.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace {

using loopwise::Surroundings;
using loopwise::Triangle;

/// Two blocks of segments, each from one point to the next, as a cloud.
struct Segments {
    explicit Segments(const Surroundings& around, const std::vector<PointR3>& points) {
        for (std::size_t i = 0; i < points.size() && i < x.size(); ++i) {
            x[i] = static_cast<float>(points[i].x - around.centre.x);
            y[i] = static_cast<float>(points[i].y - around.centre.y);
            z[i] = static_cast<float>(points[i].z - around.centre.z);
        }
    }
    std::array<float, 128 + loopwise::cloud_padding> x{}, y{}, z{};
    std::array<std::uint64_t, 2> exist{0x5555555555555555, 0x0555555555555555};
    loopwise::Cloud cloud() const { return {x.data(), y.data(), z.data(), exist.data()}; }
};

PointR3 mix(PointR3 a, PointR3 b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
}

PointR3 plus(PointR3 a, double t, PointR3 b) { return {a.x + t * b.x, a.y + t * b.y, a.z + t * b.z}; }
PointR3 minus(PointR3 a, PointR3 b) { return plus(a, -1, b); }

/// A segment that nearly or just touches the triangle: its line passes near an edge, or it ends near the
/// plane, or it hardly leaves the plane.
void add_critical(std::vector<PointR3>& points, const Triangle& t, PointR3 direction, double longest,
                  chains::Random& random) {
    const auto small = [&] { return random.between(-1, 1) * std::pow(10.0, -random.below(9)); };
    const PointR3 b = minus(t.t1, t.t0), c = minus(t.t2, t.t0);
    const double u = random.below(2) == 0 ? random.below(2) + small() : random.between(0, 1);
    const double v = random.below(2) == 0 ? small() : 1 - u + small();
    const PointR3 hit = plus(plus(t.t0, u, b), v, c);
    if (random.below(3) == 0) direction = plus(plus(b, random.between(-2, 2), c), small(), direction);
    const PointR3 start = plus(hit, random.below(2) == 0 ? 4 : 40, direction);
    points.push_back(start);
    points.push_back(
        plus(start, random.below(2) == 0 ? 1 + small() : random.between(1, longest), minus(hit, start)));
}

/// Parallel to the plane, from whole numbers: the determinant is exactly zero, the heights are not equal.
void add_parallel(std::vector<PointR3>& points, const Triangle& t, chains::Random& random) {
    const PointR3 start{std::round(random.between(-99, 99)), std::round(random.between(-99, 99)),
                        std::round(random.between(-99, 99))};
    points.push_back(start);
    points.push_back(
        plus(plus(start, random.below(9) - 4, minus(t.t1, t.t0)), random.below(9) - 4, minus(t.t2, t.t0)));
}

Surroundings around(const std::vector<PointR3>& points) {
    PointR3 low = points[0], high = points[0];
    for (const PointR3& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    const PointR3 half{(high.x - low.x) / 2, (high.y - low.y) / 2, (high.z - low.z) / 2};
    return {plus(low, 1, half), std::max({half.x, half.y, half.z}) * (1 + 1e-15)};
}

TEST(Clearing, NeverClearsWhatMeetsTheTriangle) {
    chains::Random random(31);
    int cleared = 0, met = 0;
    for (int round = 0; round < 6000; ++round) {
        const bool whole = round % 5 == 0;
        const auto corner = [&] {
            const PointR3 p = random.direction();
            return whole ? PointR3{std::round(9 * p.x), std::round(9 * p.y), std::round(9 * p.z)} : p;
        };
        Triangle t{corner(), corner(), corner()};
        if (round % 4 == 0 && !whole)
            t.t2 = plus(mix(t.t0, t.t1, random.between(-1, 2)), std::pow(10.0, -random.below(8)), t.t2);
        PointR3 shared = random.direction();
        const bool deep = round % 6 == 2;
        if (deep) { // as deep as can be for the reach: from corner to corner of the box
            shared = {0.57, 0.58, 0.58};
            t = {{0, 0, 0}, {1, -1, 0.1}, {0.5, 0.5, -1}};
        }
        std::vector<PointR3> points;
        for (int i = 0; i < 62; ++i)
            whole
                ? add_parallel(points, t, random)
                : add_critical(points, t, round % 2 == 0 ? shared : random.direction(), deep ? 1 : 3, random);
        points.insert(points.end(), {t.t0, t.t1, t.t2});
        const double scale = whole ? 1 : std::pow(10.0, random.below(9) - 4);
        for (PointR3& p : points) p = {p.x * scale, p.y * scale, p.z * scale};
        t = {points[124], points[125], points[126]};

        const Surroundings surroundings = around(points);
        const loopwise::Clearance clearance = clearance_of(t, surroundings);
        const Segments segments(surroundings, points);
        for (const loopwise::InstructionSet& set : loopwise::instruction_sets())
            for (std::size_t block = 0; block < 2; ++block) {
                std::uint64_t doubts = 0, stated = 0;
                const std::size_t found =
                    set.find_doubts(clearance, segments.cloud(), block, block + 1, doubts);
                ASSERT_EQ(found, set.statement(clearance, segments.cloud(), block, block + 1, stated))
                    << set.name;
                ASSERT_EQ(doubts, stated) << set.name;
                for (std::uint64_t left = segments.exist[block] & ~doubts; left != 0; left &= left - 1) {
                    const std::size_t j = block * 64 + static_cast<std::size_t>(std::countr_zero(left));
                    ++cleared;
                    ASSERT_EQ(literal::intersection(&points[124], &points[j]), 0)
                        << set.name << " in round " << round;
                }
                met += std::popcount(doubts);
            }
    }
    const int sets = static_cast<int>(loopwise::instruction_sets().size());
    EXPECT_GT(cleared / sets, 30000); // it is of use even here
    EXPECT_GT(met / sets, 30000);
}

} // namespace
