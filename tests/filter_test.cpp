#include "src/reduce/filter_kernels.hpp"
#include "src/reduce/frame.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <bitset>
#include <cmath>

namespace {

using loopwise::reduce::Frame;
using loopwise::reduce::Triangle;

/// One lane, with a product rounded once with the sum that follows it, or twice.
template <bool fused> struct OneLane : loopwise::reduce::Lanes<1> {
    static Floats multiply_add(Floats a, Floats b, Floats c) {
        return fused ? Floats{std::fma(a[0], b[0], c[0])} : a * b + c;
    }
    static std::uint32_t greater(Floats a, Floats b) { return a[0] > b[0]; }
    static Floats following(Floats, Floats next) { return next; }
    static void keep(Floats&) {}
};

/// What the kernels of a set come to, to the last bit.
loopwise::reduce::Kernels one_by_one(loopwise::model::InstructionSet set) {
    return loopwise::model::fuses(set) ? loopwise::reduce::FilterKernels<OneLane<true>>::table()
                                       : loopwise::reduce::FilterKernels<OneLane<false>>::table();
}

/// Points as a kernel reads them: segments from each even one to the next.
struct Segments {
    explicit Segments(const Frame& frame, const std::vector<PointR3>& points) {
        for (std::size_t i = 0; i < points.size(); ++i) {
            const PointR3 p = frame(points[i]);
            x[i] = static_cast<float>(p.x), y[i] = static_cast<float>(p.y), z[i] = static_cast<float>(p.z);
        }
    }
    std::array<float, 128 + loopwise::reduce::position_padding> x{}, y{}, z{};

    std::vector<std::size_t> candidates(loopwise::reduce::FindCandidates find, const loopwise::reduce::Filter& filter,
                                        std::size_t begin, std::size_t end) const {
        return all_of(
            [&](std::size_t from) {
                return find(filter, {x.data(), y.data(), z.data()}, from, end);
            },
            begin, end);
    }

    /// Of all that `find` has from somewhere on.
    template <class Find> static std::vector<std::size_t> all_of(Find find, std::size_t begin, std::size_t end) {
        std::vector<std::size_t> all;
        while (begin < end) {
            const loopwise::reduce::Candidates found = find(begin);
            begin = found.first;
            for (std::uint32_t lanes = found.lanes; lanes != 0; lanes &= lanes - 1) {
                begin = found.first + static_cast<std::size_t>(std::countr_zero(lanes));
                all.push_back(begin++);
            }
        }
        return all;
    }
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
    points.push_back(plus(start, random.below(2) == 0 ? 1 + small() : random.between(1, longest), minus(hit, start)));
}

/// Parallel to the plane, from whole numbers: the determinant is exactly zero, the heights are not equal.
void add_parallel(std::vector<PointR3>& points, const Triangle& t, chains::Random& random) {
    const PointR3 start{std::round(random.between(-99, 99)), std::round(random.between(-99, 99)),
                        std::round(random.between(-99, 99))};
    points.push_back(start);
    points.push_back(plus(plus(start, random.below(9) - 4, minus(t.t1, t.t0)), random.below(9) - 4, minus(t.t2, t.t0)));
}

/// Not what a reduction would take: the points fill the frame from edge to edge, or hardly.
Frame around(const std::vector<PointR3>& points) {
    Chain chain;
    for (const PointR3& p : points) chain.push_back({p.x, p.y, p.z, 0});
    loopwise::reduce::Extent extent;
    extent.widen(chain);
    return extent.frame();
}

/// What follows the coordinates is no number.
Chain atoms_at(const std::vector<PointR3>& points) {
    Chain chain;
    for (const PointR3& p : points) chain.push_back({p.x, p.y, p.z, -1});
    return chain;
}

std::vector<float> rows(loopwise::reduce::PutPositions put, const Frame& frame, const std::vector<PointR3>& points) {
    const Chain chain = atoms_at(points);
    std::vector<float> row(3 * chain.size());
    put(frame, chain, &row[0], &row[chain.size()], &row[2 * chain.size()]);
    return row;
}

TEST(Filter, NeverDropsWhatMeetsTheTriangle) {
    chains::Random random(31);
    int dropped = 0, kept = 0;
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
        if (deep) { // as deep as can be for the frame: from corner to corner
            shared = {0.57, 0.58, 0.58};
            t = {{0, 0, 0}, {1, -1, 0.1}, {0.5, 0.5, -1}};
        }
        std::vector<PointR3> points;
        for (int i = 0; i < 62; ++i)
            whole ? add_parallel(points, t, random)
                  : add_critical(points, t, round % 2 == 0 ? shared : random.direction(), deep ? 1 : 3, random);
        points.insert(points.end(), {t.t0, t.t1, t.t2});
        const double scale = whole ? 1 : std::pow(10.0, random.below(9) - 4);
        for (PointR3& p : points) p = {p.x * scale, p.y * scale, p.z * scale};
        t = {points[124], points[125], points[126]};

        const Frame frame = around(points);
        const loopwise::reduce::Filter filter = filter_of(t, frame);
        const Segments segments(frame, points);
        const std::size_t begin = static_cast<std::size_t>(random.below(20)), end = 126 - begin / 2;
        for (const loopwise::model::InstructionSet set : loopwise::model::available_instruction_sets()) {
            ASSERT_EQ(rows(loopwise::reduce::kernels(set).put_positions, frame, points),
                      rows(one_by_one(set).put_positions, frame, points))
                << name(set);
            const auto candidates =
                segments.candidates(loopwise::reduce::kernels(set).find_candidates, filter, begin, end);
            ASSERT_EQ(candidates, segments.candidates(one_by_one(set).find_candidates, filter, begin, end))
                << name(set);
            for (std::size_t j = begin; j < end; ++j) {
                const bool candidate = std::binary_search(candidates.begin(), candidates.end(), j);
                ++(candidate ? kept : dropped);
                ASSERT_TRUE(candidate || literal::intersection(&points[124], &points[j]) == 0)
                    << name(set) << " in round " << round;
            }
        }
    }
    const int sets = static_cast<int>(loopwise::model::available_instruction_sets().size());
    EXPECT_GT(dropped / sets, 60000); // it is of use even here
    EXPECT_GT(kept / sets, 60000);
}

/// What the index passes over must not meet the triangle either: boxes of one segment each and directions, whose
/// segments are parallel to the plane or nearly so, at whatever distance; and segments by both ends.
TEST(Filter, GroupsMissNothing) {
    chains::Random random(32);
    int passed_over = 0, parallel = 0;
    for (int round = 0; round < 12000; ++round) {
        const bool whole = round % 2 == 0;
        const auto corner = [&] {
            const PointR3 p = random.direction();
            return whole ? PointR3{std::round(9 * p.x), std::round(9 * p.y), std::round(9 * p.z)} : p;
        };
        const Triangle t{corner(), corner(), corner()};
        std::vector<PointR3> points;
        for (std::size_t i = 0; i < loopwise::reduce::group_size; ++i)
            whole ? add_parallel(points, t, random) : add_critical(points, t, random.direction(), 3, random);
        const std::size_t segments = points.size() / 2;
        points.insert(points.end(), {t.t0, t.t1, t.t2});
        const PointR3* const corners = &points[2 * segments];
        const Frame frame = around(points);
        const loopwise::reduce::Filter filter = filter_of(t, frame);
        if (!filter.has_normal()) continue;

        loopwise::reduce::BoxGroup boxes;
        loopwise::reduce::DirectionGroup directions;
        loopwise::reduce::SegmentGroup group;
        float shortest = 1;
        for (std::size_t j = 0; j < segments; ++j) {
            const PointR3 p = frame(points[2 * j]), q = frame(points[2 * j + 1]), d = minus(q, p);
            const auto put = [&](double a, double b, auto& start, auto& end, auto& sum, auto& difference) {
                start[j] = static_cast<float>(a), end[j] = static_cast<float>(b);
                sum[j] = start[j] + end[j], difference[j] = std::fabs(start[j] - end[j]);
            };
            put(p.x, q.x, group.x0, group.x1, boxes.x, boxes.dx);
            put(p.y, q.y, group.y0, group.y1, boxes.y, boxes.dy);
            put(p.z, q.z, group.z0, group.z1, boxes.z, boxes.dz);
            directions.v[j] = static_cast<float>(d.y / d.x), directions.w[j] = static_cast<float>(d.z / d.x);
            const bool along_x = std::fabs(d.x) >= std::max({std::fabs(d.y), std::fabs(d.z), 1e-4});
            if (!along_x) directions.v[j] = directions.w[j] = NAN; // which is never passed over
            if (along_x) shortest = std::min(shortest, static_cast<float>(std::fabs(d.x)));
        }
        const loopwise::reduce::BoxFilter box_filter(filter, {frame(t.t0), frame(t.t1), frame(t.t2)});
        const loopwise::reduce::ParallelQuery query{filter.height.x, filter.height.y, filter.height.z,
                                                    most_parallel(filter, shortest)};
        const auto in = [](auto find, const auto& what,
                           const auto& where) -> std::bitset<loopwise::reduce::group_size> {
            const loopwise::reduce::Candidates candidates = find(what, &where, 0, 1);
            EXPECT_EQ(candidates.first, candidates.lanes == 0 ? 1U : 0U);
            return std::bitset<loopwise::reduce::group_size>(candidates.lanes);
        };
        for (const loopwise::model::InstructionSet set : loopwise::model::available_instruction_sets()) {
            const loopwise::reduce::Kernels kernels = loopwise::reduce::kernels(set), stated = one_by_one(set);
            const auto near = in(kernels.find_boxes, box_filter, boxes);
            const auto turned = in(kernels.find_directions, query, directions);
            const auto both_ends = in(kernels.find_segments, filter, group);
            ASSERT_EQ(near, in(stated.find_boxes, box_filter, boxes)) << name(set);
            ASSERT_EQ(turned, in(stated.find_directions, query, directions)) << name(set);
            ASSERT_EQ(both_ends, in(stated.find_segments, filter, group)) << name(set);
            for (std::size_t j = 0; j < segments; ++j) {
                parallel += turned[j];
                if ((near[j] || turned[j]) && both_ends[j]) continue;
                ++passed_over;
                ASSERT_EQ(literal::intersection(corners, &points[2 * j]), 0) << name(set) << ", round " << round;
            }
        }
    }
    const int sets = static_cast<int>(loopwise::model::available_instruction_sets().size());
    EXPECT_GT(passed_over / sets, 3000);
    EXPECT_GT(parallel / sets, 3000);
}

} // namespace
