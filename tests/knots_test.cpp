// Names of closed polygons: of curves whose knot is known, of the table's braids, and of what has no name.
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/effort.hpp"

#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/invariants.hpp"
#include "knots/links.hpp"
#include "knots/names.hpp"
#include "knots/simplify.hpp"
#include "knots/table.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <set>
#include <unordered_set>

namespace {

using namespace loopwise::knots;

template <class Curve> Chain sampled(int beads, Curve curve) {
    Chain chain;
    for (int i = 0; i < beads; ++i) {
        const PointR3 p = curve(2 * M_PI * (i + 0.3) / beads);
        chain.push_back({p.x, p.y, p.z, i + 1});
    }
    return chain;
}

/// Twice around a torus, n times through its hole, the strands turning to the left: n negative crossings.
Chain torus(int n, int beads) {
    return sampled(beads, [n](double t) {
        const double r = 2 + std::cos(n * t);
        return PointR3{r * std::cos(2 * t), r * std::sin(2 * t), std::sin(n * t)};
    });
}

Chain figure_eight(int beads) {
    return sampled(beads, [](double t) {
        const double r = 2 + std::cos(2 * t);
        return PointR3{r * std::cos(3 * t), r * std::sin(3 * t), std::sin(4 * t)};
    });
}

Chain lissajous(int x, int y, int z, double x_phase, double y_phase, int beads) {
    return sampled(beads, [=](double t) {
        return PointR3{3 * std::cos(x * t + x_phase), 3 * std::cos(y * t + y_phase), 3 * std::cos(z * t)};
    });
}

template <class Map> Chain mapped(Chain chain, Map map) {
    for (ChainAtom& a : chain) {
        const PointR3 p = map(PointR3{a.x, a.y, a.z});
        a = {p.x, p.y, p.z, a.id};
    }
    return chain;
}
Chain mirrored(Chain chain) {
    return mapped(std::move(chain), [](PointR3 p) { return PointR3{p.x, p.y, -p.z}; });
}

/// The one name, proven or not.
std::string name_of(const KnotName& knot) {
    const std::vector<std::string> names = names_of(knot.type);
    return names.size() == 1 ? names.front() : text(knot.type);
}

struct Known {
    const char *name, *mirror;
    Chain (*make)(int beads);
};

const Known known[] = {
    {"0_1", "0_1", [](int n) { return torus(1, n); }},
    {"-3_1", "+3_1", [](int n) { return torus(3, n); }},
    {"-5_1", "+5_1", [](int n) { return torus(5, n); }},
    {"-7_1", "+7_1", [](int n) { return torus(7, n); }},
    {"-9_1", "+9_1", [](int n) { return torus(9, n + 60); }},
    {"4_1", "4_1", figure_eight},
    {"+5_2", "-5_2", [](int n) { return lissajous(3, 2, 7, 0.7, 0.2, n); }},
    {"+6_1", "-6_1", [](int n) { return lissajous(3, 2, 5, 1.5, 0.2, n); }},
    {"+3_1 # -3_1", "+3_1 # -3_1", [](int n) { return chains::sum(torus(3, n), mirrored(torus(3, n))); }},
    {"-3_1 # -3_1", "+3_1 # +3_1", [](int n) { return chains::sum(torus(3, n), torus(3, n)); }},
    {"-3_1 # +5_1", "+3_1 # -5_1", [](int n) { return chains::sum(mirrored(torus(5, n)), torus(3, n)); }},
    {"-3_1 # 4_1", "+3_1 # 4_1", [](int n) { return chains::sum(figure_eight(n), torus(3, n)); }},
    {"+3_1 # -3_1 # 4_1", "+3_1 # -3_1 # 4_1",
     [](int n) { return chains::sum(figure_eight(n), chains::sum(torus(3, n), mirrored(torus(3, n)))); }},
};

class Curves : public testing::TestWithParam<Known> {};

TEST_P(Curves, HaveOneNameFromAllSidesAndReduced) {
    const Known& curve = GetParam();
    const Silence quiet;
    chains::Random random(81);
    KnotNamer namer;
    for (const int beads : {60, 150, 400}) {
        for (int direction = 0; direction < 60 / effort::less; ++direction) {
            const PointR3 to = random.direction();
            const PointR3 axis{std::trunc(999 * to.x), std::trunc(999 * to.y), std::trunc(999 * to.z)};
            Chain ring = mapped(curve.make(beads), [axis](PointR3 p) { return ProjectPointF(p, axis); });
            ASSERT_EQ(name_of(knot_of(ring)), curve.name) << beads << " beads, direction " << direction;
            ASSERT_EQ(name_of(knot_of(mirrored(ring))), curve.mirror);
            std::reverse(ring.begin(), ring.end());
            ASSERT_EQ(name_of(knot_of(ring)), curve.name);
            ChainReduce(ring, true);
            const KnotName reduced = knot_of(ring);
            ASSERT_EQ(name_of(reduced), curve.name) << ring.size() << " of " << beads << " beads left";
            ASSERT_EQ(namer.name(ring).type, reduced.type);
            ASSERT_EQ(name_of(namer.name(mirrored(ring))), curve.mirror);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Curves, testing::ValuesIn(known));

/// Of the mirror image: capitals for small letters.
std::string mirror_word(std::string_view word) {
    std::string mirror;
    for (const char letter : word) mirror += static_cast<char>(letter ^ ('a' ^ 'A'));
    return mirror;
}

const std::string own_mirror_images[] = {"4_1",   "6_3",   "8_3",    "8_9",    "8_12",   "8_17",  "8_18",
                                         "10_17", "10_33", "10_37",  "10_43",  "10_45",  "10_79", "10_81",
                                         "10_88", "10_99", "10_109", "10_115", "10_118", "10_123"};
/// As their braids are, where the published exponents add up to 0.
const std::string right_handed[] = {"9_42", "10_48", "10_71", "10_91", "10_104", "10_125", "10_158"};

TEST(Table, HoldsThePublishedKnotsWithBothHands) {
    for (const BraidRow& row : braid_rows) {
        const std::string rolfsen = std::to_string(row.crossings) + '_' + std::to_string(row.number);
        SCOPED_TRACE(rolfsen);
        const Diagram diagram = closed_braid(row.strands, row.word);
        const std::optional<Laurent> v = jones(diagram), delta = alexander(diagram);
        ASSERT_TRUE(v && delta);
        std::int64_t at_one = 0, derivative = 0;
        for (std::size_t i = 0; i < v->coefficients.size(); ++i) {
            at_one += v->coefficients[i];
            derivative += v->coefficients[i] * (v->twice_lowest / 2 + static_cast<int>(i));
        }
        EXPECT_EQ(at_one, 1);
        EXPECT_EQ(derivative, 0);
        EXPECT_EQ(determinant(*v), row.determinant);
        EXPECT_EQ(v->twice_lowest, 2 * row.lowest);
        EXPECT_EQ(v->twice_highest(), 2 * row.highest);
        EXPECT_EQ(determinant(*delta), row.determinant);
        EXPECT_EQ(loopwise::knots::mirrored(*delta), *delta);
        EXPECT_EQ(std::accumulate(delta->coefficients.begin(), delta->coefficients.end(), std::int64_t{0}), 1);

        const bool two_hands = std::find(std::begin(own_mirror_images), std::end(own_mirror_images), rolfsen) ==
                               std::end(own_mirror_images);
        const bool right = row.lowest + row.highest > 0 || std::find(std::begin(right_handed), std::end(right_handed),
                                                                     rolfsen) != std::end(right_handed);
        const char* const hands = right ? "+-" : "-+";
        for (const int hand : {0, 1}) {
            const KnotType type = knot_of(hand == 0 ? diagram : closed_braid(row.strands, mirror_word(row.word))).type;
            EXPECT_EQ(text(type), two_hands ? hands[hand] + rolfsen : rolfsen);
            EXPECT_TRUE(type.proven);
        }
    }
}

TEST(Table, FindsEverySum) {
    std::vector<TableKnot> table;
    for (std::size_t row = 0; row < braid_rows.size(); ++row)
        table.insert(table.end(), hands_of(row).begin(), hands_of(row).end());
    EXPECT_EQ(table.size(), 2 * 249U - std::size(own_mirror_images));
    const auto names = [](std::initializer_list<const TableKnot*> factors) {
        Laurent v = Laurent::one(), delta = Laurent::one();
        for (const TableKnot* knot : factors) v = *product(v, knot->jones), delta = *product(delta, knot->alexander);
        return candidates_of(v, delta, 30, false);
    };
    for (std::size_t i = 0; i < table.size(); i += 16 * effort::less)
        for (std::size_t j = i; j < table.size(); j += 2) {
            const auto found = names({&table[i], &table[j]});
            ASSERT_EQ(std::count(found.begin(), found.end(), KnotSum{table[i].knot, table[j].knot}), 1);
            const std::size_t k = (i + 7 * j) % (i + 1); // anything that comes no later
            const auto three = names({&table[j], &table[k], &table[i]});
            ASSERT_EQ(std::count(three.begin(), three.end(), KnotSum{table[k].knot, table[i].knot, table[j].knot}), 1);
        }
    const TableKnot& trefoil = table[0];
    ASSERT_EQ(trefoil.knot, (PrimeKnot{3, 1, Hand::right}));
    EXPECT_TRUE(names({&trefoil, &trefoil, &trefoil, &trefoil}).empty());
    EXPECT_EQ(candidates_of(Laurent::one(), Laurent::one(), 24, false), std::vector<KnotSum>{{}});
    EXPECT_TRUE(candidates_of(Laurent::one(), Laurent::one(), 25, false).empty());
}

TEST(Table, TellsKnotsApartThatShareBothPolynomials) {
    // 5_1 and 10_132; 9_12 and a sum; 7_1 and knots beyond the table; the hands of 9_42.
    const auto type = [](int strands, const char* word) { return text(knot_of(closed_braid(strands, word)).type); };
    EXPECT_EQ(type(2, "AAAAA"), "-5_1");
    EXPECT_EQ(type(4, "aaaBAABCbCC"), "-10_132");
    EXPECT_EQ(type(5, "AAbACbCDcD"), "-9_12");
    EXPECT_EQ(type(5, "AbAbCCCDcD"), "4_1 # -5_2");
    const KnotName beyond = knot_of(closed_braid(3, "bbaaBBabbaBabB")), seven = knot_of(closed_braid(2, "aaaaaaa"));
    EXPECT_EQ(beyond.invariants, seven.invariants);
    EXPECT_EQ(text(seven.type), "+7_1");
    EXPECT_EQ(text(beyond.type), "beyond ten crossings");
    EXPECT_EQ(beyond.type.jones, std::get<Laurent>(seven.invariants.front().value));
    EXPECT_TRUE(beyond.type.proven);
    EXPECT_EQ(type(4, "aaaBAAcBc"), "+9_42");
    EXPECT_EQ(type(4, "AAAbaaCbC"), "-9_42");
    // Sums of any number, with what is not in the table.
    EXPECT_EQ(type(10, "aaabbbcccdddeeefFgGhHiIi"), "+3_1 # +3_1 # +3_1 # +3_1 # +3_1");
    EXPECT_EQ(type(4, "bbaaBBabbaBabBccc"), "+3_1 # beyond ten crossings");
}

TEST(Types, AreOneKnotWhereTheyAreProvenAlikeAndFitIntoColumns) {
    const KnotSum five{{5, 1, Hand::left}};
    const KnotType proven = KnotType::named({five}, true), open = KnotType::named({five}, false);
    EXPECT_EQ(text(proven), "-5_1");
    EXPECT_EQ(why_not_proven(proven), "");
    EXPECT_EQ(text(open), "-5_1 or beyond ten crossings");
    EXPECT_NE(why_not_proven(open).find("more than ten crossings"), std::string::npos);
    EXPECT_NE(open, proven);
    const KnotType link = KnotType::named({{{5, 1, Hand::right, 2}}}, false), unknot = KnotType::unknot();
    EXPECT_EQ(text(link), "+5^2_1 or beyond eight crossings");
    EXPECT_EQ(text(KnotType::apart({unknot, unknot})), "0^2_1");
    const KnotType apart = KnotType::apart({open, unknot});
    EXPECT_EQ(text(apart), "-5_1 or beyond ten crossings, 0_1 apart");
    EXPECT_EQ(why_not_proven(apart), why_not_proven(open));
    const KnotType unknown = KnotType::unknown({-20, {1}});
    EXPECT_EQ(unknown, KnotType::unknown({-18, {1}}));
    const KnotType either = KnotType::named({five, {{10, 132, Hand::left}}}, true);
    EXPECT_EQ(text(KnotType::sum(either, KnotType::named({{{3, 1, Hand::right}}}, true))),
              "+3_1 # -5_1 or +3_1 # -10_132");
    EXPECT_EQ(text(KnotType::sum(unknown, proven)), "-5_1 # beyond ten crossings");
    EXPECT_EQ(text(KnotType::sum(KnotType::too_complex(71), proven)), "not named: 71 crossings");
    std::set<KnotType> ordered;
    std::unordered_set<KnotType> hashed;
    for (const KnotType& type : {open, proven, either, link, apart, unknown, unknot, KnotType{},
                                 KnotType::too_complex(71), KnotType::no_polygon(PolygonFault::touching)}) {
        for (const std::size_t width : {5U, 14U, 36U}) EXPECT_LE(short_text(type, width).size(), width);
        EXPECT_EQ(short_text(type, 1000), text(type));
        EXPECT_TRUE(ordered.insert(type).second && hashed.insert(type).second) << text(type);
        EXPECT_TRUE(hashed.contains(KnotType(type)));
    }
    EXPECT_EQ(short_text(open, 24), "-5_1 or beyond ten ...");
}

TEST(Diagrams, KeepTheirPolynomialsUnderAllMoves) {
    chains::Random random(82);
    int moved = 0, knotted = 0;
    for (int i = 0; i < 600 / effort::less; ++i) {
        const Chain ring = chains::make(chains::Kind::tangle, 10 + i % 20, random);
        const std::array<std::span<const ChainAtom>, 1> loops{ring};
        const Diagram raw = project_diagram(loops).diagram;
        Diagram diagram = raw;
        simplify(diagram, 0);
        const auto before = jones(raw), after = jones(diagram);
        if (!before) continue;
        ASSERT_EQ(before, after) << chains::text(ring);
        ASSERT_EQ(alexander(raw), alexander(diagram)) << chains::text(ring);
        moved += diagram.size() < raw.size();
        knotted += diagram.size() > 2;
    }
    EXPECT_GT(moved, 400 / effort::less);
    EXPECT_GT(knotted, 100 / effort::less);
}

TEST(Polygons, WithoutANameGetAClearWord) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto name = [](std::initializer_list<PointR3> points) {
        Chain chain;
        for (const PointR3& p : points) chain.push_back({p.x, p.y, p.z, static_cast<int>(chain.size())});
        return text(knot_of(chain).type);
    };
    EXPECT_EQ(name({}), "not named: fewer than three beads");
    EXPECT_EQ(name({{0, 0, 0}, {1, 0, 0}, {0, 0, 0}}), "not named: fewer than three beads");
    EXPECT_EQ(name({{0, 0, 0}, {1, 0, 0}, {0, infinity, 0}}), "not named: coordinates that are not finite");
    EXPECT_EQ(name({{5, 5, 5}, {5, 5, 5}, {5, 5, 5}, {5, 5, 5}}), "not named: repeated beads");
    EXPECT_EQ(name({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 1, 0}}), "not named: repeated beads");
    EXPECT_EQ(name({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 0, 3}}), "not named: repeated beads");
    const std::string meets = "not named: the polygon meets itself, or nearly";
    EXPECT_EQ(name({{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}}), meets);            // two edges cross
    EXPECT_EQ(name({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {1, 0, 0}, {0, 2, 0}}), meets); // a bead on an edge
    EXPECT_EQ(name({{0, 0, 0}, {3, 0, 0}, {1, 0, 0}, {1, 2, 1}}), meets);            // an edge runs back on another
    // Nothing is wrong with straight runs, with scales and places, or with a copy of the first bead at the end.
    EXPECT_EQ(name({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {3, 1, 0}, {0, 1, 0}}), "0_1");
    EXPECT_EQ(name({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), "0_1");
    const Chain ring = mirrored(torus(3, 60));
    EXPECT_EQ(name_of(knot_of(chains::with_repeated_end(ring))), "+3_1");
    for (const double scale : {1e-300, 1e-150, 1.0, 1e150, 5e307})
        for (const double shift : {0.0, 1e4}) {
            const Chain far = mapped(ring, [=](PointR3 p) {
                const double away = scale < 1e300 ? shift : 0;
                return PointR3{scale * (p.x + away), scale * (p.y - away), scale * (p.z + away)};
            });
            EXPECT_EQ(name_of(knot_of(far)), "+3_1") << scale << ' ' << shift;
        }
    chains::Random random(83);
    for (const int beads : {90, 800}) { // the square of 49,000 crossings has more than 31 bits
        const KnotName tangle = knot_of(chains::make(chains::Kind::tangle, beads, random));
        EXPECT_EQ(tangle.type.status, KnotStatus::too_complex);
        EXPECT_EQ(text(tangle.type), "not named: " + std::to_string(tangle.crossings) + " crossings");
        EXPECT_GT(tangle.crossings, beads == 90 ? 59 : 46340);
    }
}

TEST(Polygons, OfAllKindsKeepTheirNameWhenReversed) {
    chains::Random random(84);
    KnotNamer namer;
    int named = 0;
    for (int i = 0; i < 600 / effort::less; ++i)
        for (const chains::Kind kind : chains::all_kinds) {
            Chain ring = chains::make(kind, 1 + i % 30, random);
            const KnotName forwards = knot_of(ring);
            std::reverse(ring.begin(), ring.end());
            const KnotName backwards = knot_of(ring);
            ASSERT_EQ(namer.name(ring).type, backwards.type) << chains::text(ring);
            // Rounding, which starts at the first bead, may decide what is too near to be told.
            const auto unsure = [](const KnotName& k) { return k.type.fault == PolygonFault::touching; };
            if (unsure(forwards) || unsure(backwards)) continue;
            ASSERT_EQ(forwards.type.fault, backwards.type.fault) << chains::text(ring);
            ASSERT_EQ(forwards.invariants, backwards.invariants) << chains::text(ring);
            named += !forwards.type.candidates.empty() && forwards.crossings > 2;
        }
    EXPECT_GT(named, 100 / effort::less);
}

/// Two strands around a torus, side by side; each goes n times around the other.
Structure torus_link(int n, int beads) {
    Structure loops;
    for (const double start : {0.0, M_PI})
        loops.push_back(sampled(beads, [=](double t) {
            const double r = 2 + std::cos(n * t + start);
            return PointR3{r * std::cos(t), r * std::sin(t), -std::sin(n * t + start)};
        }));
    return loops;
}

/// A circle, and a figure of eight around its middle that goes over and under in turn.
Structure whitehead(int beads) {
    return {sampled(beads,
                    [](double t) {
                        return PointR3{std::cos(t), std::sin(t), 0};
                    }),
            sampled(beads, [](double t) {
                return PointR3{2 * std::cos(t), std::sin(2 * t), std::sin(t) + 1.3 * std::sin(3 * t)};
            })};
}

KnotName linked(const Chain& one, const Chain& other) {
    return link_of(std::array<std::span<const ChainAtom>, 2>{one, other});
}

TEST(Links, AreNamedAndCountedWhicheverWayTheyRun) {
    const auto check = [](Structure loops, const char* name, const char* mirror, int number) {
        SCOPED_TRACE(name);
        for (const bool reduced : {false, true}) {
            if (reduced) ChainsReduce(loops, true);
            const std::vector<std::span<const ChainAtom>> spans(loops.begin(), loops.end());
            EXPECT_EQ(linking_of(spans).numbers, std::vector<int>{number});
            EXPECT_EQ(text(linked(loops[0], loops[1]).type), name);
            EXPECT_EQ(text(linked(loops[1], loops[0]).type), name);
            EXPECT_EQ(text(linked(mirrored(loops[0]), mirrored(loops[1])).type), mirror);
            Chain backwards(loops[1].rbegin(), loops[1].rend());
            EXPECT_EQ(text(linked(loops[0], backwards).type), name);
            const std::array<std::span<const ChainAtom>, 2> turned{backwards, loops[0]};
            EXPECT_EQ(linking_of(turned).numbers, std::vector<int>{-number});
        }
    };
    check(torus_link(1, 80), "2^2_1", "2^2_1", 1);
    check(torus_link(2, 80), "+4^2_1", "-4^2_1", 2);
    check(whitehead(200), "-5^2_1", "+5^2_1", 0);
    const Chain trefoil = mirrored(torus(3, 80));
    const auto away = [](PointR3 p) { return PointR3{p.x + 1, p.y + 0.4, p.z + 7}; };
    check({mapped(torus(1, 50), away), torus(1, 60)}, "0^2_1", "0^2_1", 0);
    EXPECT_EQ(text(linked(trefoil, mapped(torus(1, 50), away)).type), "+3_1, 0_1 apart");
    EXPECT_EQ(text(linked(torus(1, 60), mapped(torus(1, 50), away)).invariants.front().value), "-t^(-1/2) - t^(1/2)");
    EXPECT_EQ(text(linked(trefoil, trefoil).type), "not named: the polygon meets itself, or nearly");
}

} // namespace
