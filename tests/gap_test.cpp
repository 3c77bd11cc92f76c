// What a survey is worth: paths across gaps, verdicts and noise.
#include "knots/knot.hpp"
#include "src/model/points.hpp"
#include "src/reduce/reduction.hpp"
#include "survey/gap_paths.hpp"
#include "survey/minimal_closure.hpp"
#include "survey/noise.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>

using namespace loopwise;
using namespace loopwise::survey;

namespace {

using model::operator-;
constexpr double bond = 3.8;

Chain path_of(double apart, std::size_t beads, std::uint64_t seed) {
    Chain path{{1, 2, 3, 0}};
    const PointR3 from = model::position(path.front()), to{1, 2 + apart * 0.6, 3 - apart * 0.8};
    append_path(path, from, to, beads, bond, ClosureRng(seed, 0));
    path.push_back({to.x, to.y, to.z, 0});
    return path;
}

TEST(GapPaths, HaveStepsOfOneLengthAndTheEndsAsked) {
    for (const auto& [apart, beads] : {std::pair{4.5, 1}, {7.6, 1}, {7.59, 2}, {0.5, 2}, {42.0, 11}, {12.0, 100}})
        for (std::uint64_t seed = 0; seed < 5; ++seed) {
            const Chain path = path_of(apart, static_cast<std::size_t>(beads), seed);
            ASSERT_EQ(path.size(), static_cast<std::size_t>(beads) + 2);
            for (std::size_t i = 0; i + 1 < path.size(); ++i)
                EXPECT_NEAR(model::distance(model::position(path[i]), model::position(path[i + 1])), bond, 1e-6);
        }
}

TEST(GapPaths, TakeLongerStepsAcrossAGapThatIsFarTooLong) {
    EXPECT_EQ(path_beads({0, 1e8, 0}, bond), most_path_beads);
    EXPECT_EQ(path_beads({0, 1e300, 5}, bond), most_path_beads);
    const Chain path = path_of(1e8, most_path_beads, 1);
    double sum = 0;
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        sum += model::distance(model::position(path[i]), model::position(path[i + 1]));
    EXPECT_NEAR(sum, 2e8, 1);
}

/// All paths of four steps are equally likely where the middle bead has a density of 1/(r s), as two steps reach each
/// place at a distance of r with one of 1/r.
TEST(GapPaths, AreAllEquallyLikely) {
    constexpr double apart = 6.0, cell = 0.05;
    double weight = 0, expected = 0;
    for (double along = -2 * bond; along < apart + 2 * bond; along += cell)
        for (double off = cell / 2; off < 2 * bond; off += cell) {
            const double r = std::hypot(along, off), s = std::hypot(along - apart, off);
            if (r > 2 * bond || s > 2 * bond) continue;
            weight += off / (r * s);
            expected += off / (r * s) * r * r;
        }
    double sum = 0;
    constexpr std::uint64_t paths = 20'000;
    for (std::uint64_t seed = 0; seed < paths; ++seed) {
        const Chain path = path_of(apart, 3, seed);
        sum += model::squared_distance(model::position(path[0]), model::position(path[2]));
    }
    EXPECT_NEAR(sum / paths, expected / weight, 0.01 * expected / weight);
}

TEST(GapPaths, AreAsLongAsTheResidueNumbersSayIfTheseReachTheOtherSide) {
    for (const auto& [length, missing, beads] :
         {std::tuple{13.2, 6, 6}, {11.5, 3, 3}, {11.5, 2, 7}, {11.3, 2, 2}, {4.5, 0, 3}, {42.0, 0, 23}, {8.0, 900, 80}})
        EXPECT_EQ(path_beads({0, length, static_cast<std::size_t>(missing)}, bond), static_cast<std::size_t>(beads))
            << length << " " << missing;
}

/// A long random path of which some beads are missing, numbered by their places.
polymer::NamedChain with_gaps(std::initializer_list<std::pair<std::size_t, std::size_t>> gaps) {
    polymer::NamedChain chain;
    const Chain whole = path_of(20.0, 150, 7);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (std::any_of(gaps.begin(), gaps.end(), [i](const auto& gap) { return gap.first < i && i < gap.second; }))
            continue;
        chain.beads.push_back(whole[i]);
        chain.residues.emplace_back(static_cast<std::int32_t>(i));
    }
    return chain;
}

Result surveyed(const polymer::NamedChain& chain, unsigned threads, const char* method = "directions") {
    Plan plan;
    plan.method = Method::named(method, true);
    plan.closures = std::min<std::size_t>(plan.method->most_closures, 100);
    plan.scale = plan.method->default_scale;
    plan.threads = threads;
    Watcher silent;
    return survey::survey({"", {chain}}, plan, silent);
}

/// Every plane through three beads that has all others on one side holds a face of the hull.
double plain_distance_out(const Chain& chain, const ChainAtom& bead) {
    double least = INFINITY;
    const auto at = [&](std::size_t i) { return model::position(chain[i]); };
    for (std::size_t i = 0; i < chain.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            for (std::size_t k = 0; k < j; ++k) {
                const PointR3 normal = model::cross(at(j) - at(i), at(k) - at(i));
                double low = 0, high = 0;
                for (std::size_t m = 0; m < chain.size(); ++m)
                    if (m != i && m != j && m != k) {
                        low = std::min(low, model::dot(normal, at(m) - at(i)));
                        high = std::max(high, model::dot(normal, at(m) - at(i)));
                    }
                if (low < 0 && high > 0) continue;
                least = std::min(least,
                                 std::abs(model::dot(normal, model::position(bead) - at(i))) / model::length(normal));
            }
    return least;
}

TEST(MinimalClosure, GoesTheNearestWayOutOfTheHull) {
    for (std::uint64_t seed = 0; seed < 8; ++seed) {
        Chain chain = path_of(5.0, 28, seed);
        const auto [front, back] = ways_out(chain);
        EXPECT_NEAR(front.distance, plain_distance_out(chain, chain.front()), 1e-9);
        EXPECT_NEAR(back.distance, plain_distance_out(chain, chain.back()), 1e-9);
        const std::size_t beads = chain.size();
        chain.back().id = INT32_MAX;
        ASSERT_EQ(close_minimally(chain), closure::Closing::closed);
        EXPECT_EQ(chain.size() == beads, front.distance + back.distance >= 5.0);
        if (chain.size() > beads) {
            EXPECT_EQ(chain[beads].id, INT32_MIN) << "the numbers of added atoms wrap around";
        }
        EXPECT_NE(knots::knot_of(chain).type.status, knots::KnotStatus::no_polygon);
    }
    Chain flat{{0, 0, 0, 1}, {4, 0, 0, 2}, {4, 4, 0, 3}, {9, 9, 0, 4}};
    EXPECT_EQ(ways_out(flat)[0].distance, 0);
}

TEST(Noise, IsGaussianInEachCoordinateAndRepeatable) {
    constexpr double size = 0.7;
    polymer::NamedChain chain;
    chain.beads.assign(20'000, {1, 2, 3, 0});
    polymer::NamedChain again = chain, other = chain;
    shake(chain, size, 5, 1);
    shake(again, size, 5, 1);
    shake(other, size, 5, 2);
    double sum = 0, squares = 0, fourths = 0, product = 0;
    for (std::size_t i = 0; i < chain.beads.size(); ++i) {
        const double x = (chain.beads[i].x - 1) / size, y = (chain.beads[i].y - 2) / size;
        sum += x;
        squares += x * x;
        fourths += x * x * x * x;
        product += x * y;
        ASSERT_EQ(chain.beads[i].z, again.beads[i].z);
        ASSERT_NE(chain.beads[i].z, other.beads[i].z);
    }
    const auto beads = static_cast<double>(chain.beads.size());
    EXPECT_NEAR(sum / beads, 0, 0.03);
    EXPECT_NEAR(squares / beads, 1, 0.05);
    EXPECT_NEAR(fourths / beads, 3, 0.3);
    EXPECT_NEAR(product / beads, 0, 0.03);
    polymer::NamedChain ring;
    ring.beads = {{0, 0, 0, 1}, {1, 0, 0, 2}, {0, 1, 0, 3}, {0, 0, 0, 4}};
    shake(ring, size, 5, 1);
    EXPECT_TRUE(polymer::is_ring(ring));
}

TEST(GapVerdict, IsTheSameForAnyNumberOfThreadsAndMethods) {
    const polymer::NamedChain chain = with_gaps({{30, 50}, {100, 120}});
    const GapVerdict one = *surveyed(chain, 1).components[0].verdict;
    const knots::KnotType knot = one.knot;
    for (const char* method : {"directions", "point"})
        for (const unsigned threads : {1U, 3U}) {
            const Result result = surveyed(chain, threads, method);
            const GapVerdict& other = *result.components[0].verdict;
            if (other.knot != knot) continue; // another method may see another knot
            EXPECT_EQ(other.all.agreeing, one.all.agreeing);
            EXPECT_EQ(other.hangs_on, one.hangs_on);
            EXPECT_EQ(closures_of(other.knots, knot), closures_of(one.knots, knot));
        }
    EXPECT_EQ(one.all.paths, gap_paths);
    ASSERT_EQ(one.fragments.size(), 3U);
    for (const Fragment& fragment : one.fragments) EXPECT_EQ(all_closures(fragment.knots), 100U);
    EXPECT_EQ(one.fragments[1].first, 31U);
    EXPECT_EQ(one.fragments[2].last, chain.beads.size() - 1);
    EXPECT_FALSE(surveyed(with_gaps({}), 1).components[0].verdict);
    polymer::NamedChain nameless = chain; // at this distance its beads are at one place
    for (std::size_t i = 31; i < nameless.beads.size(); ++i) nameless.beads[i].x = 1e9;
    EXPECT_EQ(surveyed(nameless, 1).components[0].verdict->verdict, Verdict::undecided);
}

TEST(GapVerdict, OfARingIsAsSpelledOut) {
    const polymer::NamedChain chain = with_gaps({{30, 50}});
    const GapVerdict verdict = *surveyed(chain, 1, "ring").components[0].verdict;
    std::size_t agreeing = 0;
    for (std::size_t path = 0; path < gap_paths; ++path) {
        Chain loop(chain.beads.begin(), chain.beads.begin() + 31);
        append_path(loop, model::position(chain.beads[30]), model::position(chain.beads[31]), 19, bond,
                    ClosureRng(0, path));
        loop.insert(loop.end(), chain.beads.begin() + 31, chain.beads.end());
        reduce::reduce(loop, true);
        if (knots::knot_of(loop).type == verdict.knot) ++agreeing;
    }
    EXPECT_EQ(verdict.all.agreeing, agreeing);
    EXPECT_EQ(all_closures(verdict.knots), gap_paths);
}

TEST(GapVerdict, EndsWhenThePathsAreNotWanted) {
    const polymer::NamedChain chain = with_gaps({{30, 50}});
    struct Enough {};
    for (const unsigned most : {0U, 1U, 2U, 60U}) {
        std::atomic<std::size_t> begun = 0;
        const auto count = [&] {
            if (begun++ == most) throw Enough{};
        };
        EXPECT_THROW(judge_gaps(chain, polymer::bonds_of(chain), knots::KnotType::unknot(), {.threads = 2}, count),
                     Enough);
    }
}

} // namespace
