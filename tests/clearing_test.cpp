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
    std::array<std::uint64_t, 2> exist{0x5555555555555555, 0x1555555555555555};
    loopwise::Cloud cloud() const { return {x.data(), y.data(), z.data(), exist.data()}; }
};

PointR3 mix(PointR3 a, PointR3 b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
}

/// A segment that nearly or just touches the triangle: through a point near an edge, an end near the
/// plane, or nearly parallel to it. The even points of the cloud begin segments.
void add_critical(std::vector<PointR3>& points, const Triangle& t, chains::Random& random) {
    const auto near = [&](double x) { return x + random.between(-1, 1) * std::pow(10.0, -random.below(9)); };
    const double u = random.below(2) == 0 ? near(random.below(2)) : random.between(0, 1);
    const double v = random.below(2) == 0 ? near(0) : near(1 - u);
    const PointR3 b = mix(t.t0, t.t1, u),
                  hit{b.x + v * (t.t2.x - t.t0.x), b.y + v * (t.t2.y - t.t0.y), b.z + v * (t.t2.z - t.t0.z)};
    const PointR3 d = random.direction(), in_plane = mix(t.t1, t.t2, random.between(-2, 2));
    PointR3 start{hit.x + 4 * d.x, hit.y + 4 * d.y, hit.z + 4 * d.z};
    if (random.below(3) == 0) start = mix(hit, in_plane, near(1)); // hardly leaves the plane
    points.push_back(start);
    points.push_back(mix(start, hit, random.below(2) == 0 ? near(1) : random.between(1, 3)));
}

TEST(Clearing, NeverClearsWhatMeetsTheTriangle) {
    chains::Random random(31);
    int cleared = 0, met = 0;
    for (int round = 0; round < 4000; ++round) {
        const double scale = std::pow(10.0, random.below(9) - 4), far = round % 3 == 0 ? 300 : 20;
        std::vector<PointR3> points;
        Triangle t{random.direction(), random.direction(), random.direction()};
        if (round % 4 == 0)
            t.t2 = mix(mix(t.t0, t.t1, random.between(-1, 2)), t.t2,
                       std::pow(10.0, -random.below(8))); // slender
        for (int i = 0; i < 64; ++i) add_critical(points, t, random);
        for (PointR3* p : {&t.t0, &t.t1, &t.t2}) *p = {p->x * scale, p->y * scale, p->z * scale};
        double reach = 0;
        for (PointR3& p : points) {
            p = {p.x * scale, p.y * scale, p.z * scale};
            reach = std::max({reach, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
        }
        const Surroundings around{{0.3 * scale, 0, 0}, std::max(2 * reach, far * scale)};
        const loopwise::Clearance clearance = clearance_of(t, around);
        const Segments segments(around, points);
        const PointR3 corners[] = {t.t0, t.t1, t.t2};
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
                    ASSERT_EQ(literal::intersection(corners, points.data() + j), 0)
                        << set.name << " in round " << round;
                }
                met += std::popcount(doubts);
            }
    }
    EXPECT_GT(cleared, 100000); // it is of use even here
    EXPECT_GT(met, 100000);
}

} // namespace
