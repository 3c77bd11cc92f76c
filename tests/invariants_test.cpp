// What has to stay: the entanglement under reduction, and results under changes of the coordinates that
// arithmetic carries through exactly.
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/effort.hpp"

#include "knots/links.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

Chain trace(const std::string& name) {
    bool error = false;
    std::string path = TRACES + name + ".txt";
    return ChainRead(path.data(), error);
}

struct Trace {
    const char *name, *knot;
};

class Traces : public testing::TestWithParam<Trace> {};

/// Closed in a direction that leads out through the knot, a chain may be another knot.
TEST_P(Traces, StayTheKnotsThatTheyAre) {
    const Chain open = trace(GetParam().name);
    ASSERT_GT(open.size(), 100U);
    const Silence quiet;
    int directions = 0, as_expected = 0;
    for (int row = 0; row < 400; row += effort::less, ++directions) {
        Chain ring = open;
        ASSERT_EQ(CloseChain_1direction_NoRandom(ring, row), 0);
        const std::string before = text(loopwise::knots::knot_of(ring).type);
        const int left = ChainReduce(ring, true);
        ASSERT_EQ(text(loopwise::knots::knot_of(ring).type), before)
            << GetParam().name << " closed in direction " << row;
        EXPECT_TRUE(left > 3 || before == "0_1");
        as_expected += before == GetParam().knot;
    }
    EXPECT_GT(as_expected, directions * 3 / 4) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(Shipped, Traces,
                         testing::Values(Trace{"trefoil", "-3_1"}, Trace{"figure_eight", "4_1"},
                                         Trace{"unknot", "0_1"}));

TEST(Entanglement, OfRandomRingsIsKept) {
    chains::Random random(61);
    const Silence quiet;
    int knotted = 0;
    for (int i = 0; i < 200; ++i) {
        const bool compact = i % 2 == 0;
        Chain ring =
            chains::make(compact ? chains::Kind::compact : chains::Kind::tangle, compact ? 60 + i : 10 + i / 8, random);
        const loopwise::knots::KnotName before = loopwise::knots::knot_of(ring);
        ChainReduce(ring, true);
        const loopwise::knots::KnotName after = loopwise::knots::knot_of(ring);
        ASSERT_EQ(after.invariants, before.invariants) << "ring " << i;
        knotted += before.crossings > 2;
    }
    EXPECT_GT(knotted, 0);
}

TEST(Entanglement, OfTwoRingsIsKept) {
    chains::Random random(62);
    int linked = 0;
    for (int i = 0; i < 300; ++i) {
        Structure rings{chains::make(chains::Kind::compact, 30 + i % 50, random),
                        chains::make(chains::Kind::compact, 40, random)};
        for (ChainAtom& atom : rings[1]) atom.x += 5, atom.y += 0.013;
        const auto numbers = [&rings] {
            const std::vector<std::span<const ChainAtom>> loops(rings.begin(), rings.end());
            return loopwise::knots::linking_of(loops).numbers;
        };
        const std::vector<int> before = numbers();
        ASSERT_EQ(before.size(), 1U);
        ChainsReduce(rings, true);
        ASSERT_EQ(numbers(), before) << "pair " << i;
        linked += before.front() != 0;
    }
    EXPECT_GT(linked, 0);
}

template <class Map> Chain mapped(Chain chain, Map map) {
    for (ChainAtom& a : chain) {
        const PointR3 p = map(PointR3{a.x, a.y, a.z});
        a = {p.x, p.y, p.z, a.id};
    }
    return chain;
}

TEST(Invariance, OfMeasuresAndReductionsIsExactWhereArithmeticIs) {
    chains::Random random(63);
    const Silence quiet;
    for (int i = 0; i < 300 / effort::less; ++i) {
        const Chain chain = chains::make(i % 2 == 0 ? chains::Kind::compact : chains::Kind::tangle, 60, random);
        const Chain doubled = mapped(chain, [](PointR3 p) { return PointR3{p.x * 4, p.y * 4, p.z * 4}; });
        const Chain mirrored = mapped(chain, [](PointR3 p) { return PointR3{-p.x, p.y, -p.z}; });
        const Chain swapped = mapped(chain, [](PointR3 p) { return PointR3{p.y, p.x, p.z}; });
        const auto rounded = [](double x) { return std::round(x * 1024) / 1024; };
        const Chain whole = mapped(chain, [&](PointR3 p) { return PointR3{rounded(p.x), rounded(p.y), rounded(p.z)}; });
        const Chain shifted = mapped(whole, [](PointR3 p) { return PointR3{p.x + 512, p.y - 4096, p.z + 2}; });
        EXPECT_EQ(RadiusOfChain(doubled), 4 * RadiusOfChain(chain));
        EXPECT_EQ(DiameterOfChain(doubled), 4 * DiameterOfChain(chain));
        EXPECT_EQ(RadiusOfChain(mirrored), RadiusOfChain(chain));
        EXPECT_EQ(RadiusOfChain(swapped), RadiusOfChain(chain));
        EXPECT_EQ(DiameterOfChain(mirrored), DiameterOfChain(chain));
        EXPECT_EQ(DiameterOfChain(swapped), DiameterOfChain(chain));
        EXPECT_EQ(DiameterOfChain(shifted), DiameterOfChain(whole));
        // t, u and v are ratios: a power of two and a sign cancel, an exact shift never comes in.
        const auto left = [](Chain reduced) {
            ChainReduce(reduced, true);
            std::vector<int> ids;
            for (const ChainAtom& a : reduced) ids.push_back(a.id);
            return ids;
        };
        EXPECT_EQ(left(doubled), left(chain)) << chains::text(chain);
        EXPECT_EQ(left(mirrored), left(chain)) << chains::text(chain);
        EXPECT_EQ(left(shifted), left(whole)) << chains::text(whole);
        Chain backwards = chain;
        std::reverse(backwards.begin(), backwards.end());
        EXPECT_EQ(DiameterOfChain(backwards), DiameterOfChain(chain));
    }
}

} // namespace
