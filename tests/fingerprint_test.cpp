#include "fingerprint/fingerprint.hpp"

#include "fingerprint/direction_classes.hpp"
#include "fingerprint/typical.hpp"
#include "knots/knot.hpp"
#include "src/closure/closures.hpp"
#include "src/closure/point_tables.hpp"
#include "src/reduce/reduction.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <map>
#include <numbers>
#include <random>
#include <set>

using namespace loopwise::closure;
using namespace loopwise::reduce;
using namespace loopwise::knots;
using namespace loopwise::fingerprint;
using namespace loopwise::polymer;

namespace {

constexpr std::size_t closures = 12;

struct Silent : FingerprintWatcher {
    void subchain_closed(std::size_t, std::size_t, double) override {}
};

void append(Chain& chain, double x, double y, double z) {
    chain.push_back({x, y, z, static_cast<int>(chain.size()) + 1});
}

/// A left-handed trefoil of so many beads, open where it comes out, moved by the shift.
void append_trefoil(Chain& chain, int beads, double shift, bool backwards) {
    for (int i = 0; i < beads; ++i) {
        const double part = (backwards ? beads - 1 - i : i) / (beads - 1.0);
        const double t = std::numbers::pi / 3 + 0.25 + (2 * std::numbers::pi - 0.5) * part;
        append(chain, 3 * (std::sin(t) + 2 * std::sin(2 * t)) + shift, 3 * (std::cos(t) - 2 * std::cos(2 * t)),
               -3 * std::sin(3 * t) + shift);
    }
}

NamedChain named(Chain beads) {
    std::vector<ResidueId> residues = residues_of(beads);
    return {"", std::move(beads), std::move(residues)};
}

/// Tails of different length go straight away from a trefoil.
NamedChain knot_in_the_middle() {
    Chain trefoil, chain;
    append_trefoil(trefoil, 30, 0, false);
    const auto tail = [&](const ChainAtom& at, int beads, bool outwards) {
        for (int i = 0; i < beads; ++i) {
            const double scale = 1 + 0.25 * (outwards ? i + 1 : beads - i);
            append(chain, scale * at.x + std::sin(2.0 * i), scale * at.y + std::cos(2.0 * i), scale * at.z);
        }
    };
    tail(trefoil.front(), 14, false);
    for (const ChainAtom& bead : trefoil) append(chain, bead.x, bead.y, bead.z);
    tail(trefoil.back(), 21, true);
    return named(chain);
}

/// A trefoil whose end goes back beside itself all the way: drawn out, nothing is left of it.
NamedChain slipknot() {
    Chain chain;
    append_trefoil(chain, 30, 0, false);
    append_trefoil(chain, 30, 0.3, true);
    return named(chain);
}

/// The knot of a closure, spelled out.
KnotType knot_in_row(const Chain& chain, Subchain s, int row) {
    Chain loop(chain.begin() + static_cast<std::ptrdiff_t>(s.first),
               chain.begin() + static_cast<std::ptrdiff_t>(s.last) + 1);
    close_in_direction(loop, row);
    reduce(loop, true);
    const KnotType knot = knot_of(loop).type;
    return knot.has_name() ? knot : KnotType{};
}

/// The most frequent knot of a subchain, spelled out.
std::pair<KnotType, std::size_t> judged(const Chain& chain, Subchain s) {
    std::map<KnotType, std::size_t> counts;
    for (const int row : farthest_point_order().first(closures)) ++counts[knot_in_row(chain, s, row)];
    std::pair<KnotType, std::size_t> most;
    for (const bool with_knots : {true, false})
        for (const auto& [knot, count] : counts)
            if (knot.is_knot() == with_knots && count > most.second) most = {knot, count};
    return most;
}

ChainFingerprint fingerprint(const NamedChain& chain, std::size_t step, unsigned threads = 2) {
    Silent silent;
    return fingerprint_of("", chain, {closures, {step}, threads}, silent);
}

class OfAChain : public testing::TestWithParam<NamedChain (*)()> {};

TEST_P(OfAChain, EveryStretchIsAsSpelledOutAlsoThoseTooShortForAKnot) {
    const NamedChain chain = GetParam()();
    const ChainFingerprint full = fingerprint(chain, 1);
    for (std::size_t first = 0; first < chain.beads.size(); ++first)
        for (std::size_t last = first + 1; last < chain.beads.size(); ++last) {
            const auto [knot, count] = judged(chain.beads, {first, last});
            const auto& cell = full.matrix.at({first, last});
            // Two beads and their copies are a flat loop, which has no name.
            if (last == first + 1) continue;
            ASSERT_EQ(full.knots[cell.knot], knot) << first << ' ' << last;
            ASSERT_EQ(cell.closures, count) << first << ' ' << last;
        }
}

TEST_P(OfAChain, IsTheSameWithBoundedWorkThatSuffices) {
    const NamedChain chain = GetParam()();
    Silent silent;
    const ChainFingerprint grid = fingerprint(chain, 7),
                           bounded = fingerprint_of("", chain, {closures, {7, 1e12}, 2}, silent);
    EXPECT_EQ(bounded.tested, grid.tested);
    EXPECT_EQ(bounded.borders_within, 1);
    ASSERT_EQ(bounded.places.size(), grid.places.size());
    for (std::size_t i = 0; i < grid.places.size(); ++i) EXPECT_EQ(bounded.places[i].core, grid.places[i].core);
}

TEST_P(OfAChain, SaysHowFarItIsOffWhereBoundedWorkEndsEarly) {
    const NamedChain chain = GetParam()();
    const ChainFingerprint full = fingerprint(chain, 1), grid = fingerprint(chain, 7);
    const auto apart = [](std::size_t x, std::size_t y) { return x > y ? x - y : y - x; };
    std::set<std::size_t> cores_within;
    for (const double work : {1.0, 1500.0, 3000.0, 4500.0, 6000.0, 7000.0}) {
        Silent silent;
        const auto with_threads = [&](unsigned threads) {
            return fingerprint_of("", chain, {closures, {7, work}, threads}, silent);
        };
        const ChainFingerprint found = with_threads(1), other = with_threads(3);
        EXPECT_LT(found.tested, grid.tested) << work;
        EXPECT_GT(found.borders_within, 1) << work;
        ASSERT_FALSE(found.places.empty());
        const KnotPlace& place = found.places.front();
        ASSERT_TRUE(place.core);
        cores_within.insert(place.core_within);
        const Subchain &core = *place.core, &exact = *full.places.front().core;
        EXPECT_LE(apart(core.first, exact.first), place.core_within) << work;
        EXPECT_LE(apart(core.last, exact.last), place.core_within) << work;
        ASSERT_EQ(found.depth.has_value(), full.depth.has_value());
        for (std::size_t end = 0; found.depth && end < 2; ++end)
            EXPECT_LE(apart((*found.depth)[end], (*full.depth)[end]), found.depth_within[end]) << work;

        EXPECT_EQ(other.tested, found.tested);
        EXPECT_EQ(other.borders_within, found.borders_within);
        EXPECT_EQ(other.depth, found.depth);
        ASSERT_EQ(other.places.size(), found.places.size());
        EXPECT_EQ(other.places.front().core, core);
        EXPECT_EQ(other.places.front().core_within, place.core_within);
    }
    EXPECT_GT(cores_within.size(), 1) << "more work tells more";
}

TEST_P(OfAChain, TheGridFindsWhatEveryStretchShowsWithAnyNumberOfThreads) {
    const NamedChain chain = GetParam()();
    const ChainFingerprint full = fingerprint(chain, 1), grid = fingerprint(chain, 7), alone = fingerprint(chain, 7, 1);
    EXPECT_LT(grid.tested, full.tested / 2);
    EXPECT_EQ(grid.knot, full.knot);
    EXPECT_EQ(grid.depth, full.depth);
    ASSERT_EQ(grid.places.empty(), full.places.empty());
    ASSERT_FALSE(full.places.empty());
    EXPECT_EQ(grid.places.front().core, full.places.front().core);
    EXPECT_EQ(grid.places.front().kind, full.places.front().kind);
    EXPECT_EQ(grid.knots, alone.knots);
    for (std::size_t last = 0; last < chain.beads.size(); ++last)
        for (std::size_t first = 0; first <= last; ++first) {
            const auto &a = grid.matrix.at({first, last}), &b = alone.matrix.at({first, last});
            ASSERT_TRUE(a.knot == b.knot && a.closures == b.closures);
            ASSERT_EQ(grid.matrix.is_tested({first, last}), alone.matrix.is_tested({first, last}));
        }
}

INSTANTIATE_TEST_SUITE_P(Chains, OfAChain, testing::Values(knot_in_the_middle, slipknot),
                         [](const auto& chain) { return chain.index == 0 ? "knot" : "slipknot"; });

TEST(Fingerprint, KnowsAKnotWithTailsFromASlipknot) {
    const ChainFingerprint knot = fingerprint(knot_in_the_middle(), 1);
    EXPECT_EQ(text(knot.knot), "-3_1");
    ASSERT_EQ(knot.places.size(), 1);
    const KnotPlace& place = knot.places.front();
    EXPECT_EQ(place.kind, PlaceKind::knot);
    EXPECT_EQ(place.share, knot.share);
    ASSERT_TRUE(place.core);
    // No shorter stretch has half of its closures, and the core lies in the trefoil's beads.
    knot.matrix.for_each_tested([&](Subchain s, const FingerprintMatrix::Cell& cell) {
        EXPECT_TRUE(s.size() >= place.core->size() || cell.knot == 0 || 2 * cell.closures < closures);
    });
    EXPECT_TRUE((Subchain{13, 44}.holds(*place.core))) << place.core->first << ' ' << place.core->last;
    ASSERT_TRUE(knot.depth);
    EXPECT_GE((*knot.depth)[0], place.core->first);

    // The search from the top takes all that the depth allows off one end, and then all that it can off the other.
    ASSERT_TRUE(knot.core_from_top);
    const Subchain whole = knot.matrix.whole_chain(), top = *knot.core_from_top;
    const auto is_knot = [&](Subchain s) { return knot.matrix.at(s).knot == knot.matrix.at(whole).knot; };
    const bool front_first = top.first == (*knot.depth)[0];
    EXPECT_TRUE(front_first || whole.last - top.last == (*knot.depth)[1]);
    for (std::size_t off = 0; off + top.size() <= whole.size(); ++off) {
        const Subchain longer = front_first ? Subchain{top.first, std::min(top.last + off, whole.last)}
                                            : Subchain{top.first - std::min(off, top.first), top.last};
        EXPECT_TRUE(is_knot(longer)) << off;
    }
    EXPECT_FALSE(is_knot(front_first ? Subchain{top.first, top.last - 1} : Subchain{top.first + 1, top.last}));
    EXPECT_LE(top.size(), whole.size() - (*knot.depth)[0]);
    EXPECT_LE(top.size(), whole.size() - (*knot.depth)[1]);

    const ChainFingerprint slip = fingerprint(slipknot(), 1);
    EXPECT_EQ(slip.knot, KnotType::unknot());
    EXPECT_FALSE(slip.depth);
    EXPECT_FALSE(slip.core_from_top);
    ASSERT_FALSE(slip.places.empty());
    for (const KnotPlace& loop : slip.places) EXPECT_EQ(loop.kind, PlaceKind::slipknot);
    EXPECT_GE(slip.places.front().greatest_share, 0.9);
}

/// One trefoil after another, with a way around the second in between.
NamedChain two_trefoils() {
    Chain chain;
    append_trefoil(chain, 24, 0, false);
    for (const double part : {0.25, 0.5, 0.75}) append(chain, 8 + 40 * part, 5 + 20 * part, 10 * part);
    append_trefoil(chain, 24, 20, false);
    return named(chain);
}

TEST(Fingerprint, KnowsFactorsFromSlipknots) {
    const auto kinds = [](const ChainFingerprint& found) {
        std::multiset<std::string> all;
        for (const KnotPlace& place : found.places)
            if (place.greatest_share >= 2.0 / 3.0) all.insert(text(place.knot) + ' ' + text(place.kind));
        return all;
    };
    using Kinds = std::multiset<std::string>;
    EXPECT_EQ(kinds(fingerprint(two_trefoils(), 6)), (Kinds{"-3_1 # -3_1 knot", "-3_1 factor", "-3_1 factor"}));

    NamedChain with_slipknot = two_trefoils();
    with_slipknot.beads.erase(with_slipknot.beads.begin() + 27, with_slipknot.beads.end());
    for (const ChainAtom& bead : slipknot().beads) append(with_slipknot.beads, bead.x + 20, bead.y, bead.z + 20);
    // Both strands of the slipknot are a trefoil; with the trefoil before it the first is a sum, which is undone.
    EXPECT_EQ(kinds(fingerprint(named(with_slipknot.beads), 6)),
              (Kinds{"-3_1 knot", "-3_1 slipknot", "-3_1 slipknot", "-3_1 # -3_1 slipknot"}));
}

TEST(Fingerprint, TellsAFactorByItsName) {
    const PrimeKnot three{3, 1, Hand::left}, other{3, 1, Hand::right}, four{4, 1}, nine{9, 12, Hand::left};
    const auto sum = [](KnotSum factors, bool proven = true) { return KnotType::named({std::move(factors)}, proven); };
    const KnotType trefoil = sum({three}), granny = sum({three, three}), mixed = sum({three, four}),
                   either = KnotType::named({{nine}, {three, four}}, true), unknown = KnotType::unknown({}),
                   partly_unknown = KnotType::sum(unknown, trefoil);
    for (const auto& [knot, part] : {std::pair{granny, trefoil},
                                     {mixed, sum({four}, false)},
                                     {sum({three, four}, false), trefoil},
                                     {either, either},
                                     {partly_unknown, trefoil},
                                     {sum({three, three, four}), granny}})
        EXPECT_EQ(holds_factor(knot, part), true) << text(knot) << ": " << text(part);
    for (const auto& [knot, part] : {std::pair{trefoil, granny},
                                     {mixed, granny},
                                     {granny, sum({other})},
                                     {KnotType::unknot(), unknown},
                                     {KnotType::unknot(), sum({three}, false)},
                                     {trefoil, unknown},
                                     {either, sum({other})}})
        EXPECT_EQ(holds_factor(knot, part), false) << text(knot) << ": " << text(part);
    for (const auto& [knot, part] : {std::pair{either, trefoil},
                                     {sum({four}, false), trefoil},
                                     {granny, unknown},
                                     {partly_unknown, sum({four})},
                                     {KnotType::too_complex(80), trefoil}})
        EXPECT_EQ(holds_factor(knot, part), std::nullopt) << text(knot) << ": " << text(part);
}

TEST(Fingerprint, TakesRowsThatAreSpread) {
    const auto rows = farthest_point_order();
    EXPECT_EQ(std::set<int>(rows.begin(), rows.end()).size(), uniform_directions.size());
    const auto angle = [&](std::size_t i, std::size_t j) {
        const PointR3 &a = uniform_directions[static_cast<std::size_t>(rows[i])],
                      &b = uniform_directions[static_cast<std::size_t>(rows[j])];
        return std::acos(std::min(1.0, a.x * b.x + a.y * b.y + a.z * b.z));
    };
    for (const auto& [taken, widest] : {std::pair{100, 0.21}, {20, 0.64}}) {
        const auto count = static_cast<std::size_t>(taken);
        double apart = 4, away = 0;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            double nearest = 4;
            for (std::size_t j = 0; j < std::min(i, count); ++j) nearest = std::min(nearest, angle(i, j));
            if (i > 0) (i < count ? apart : away) = i < count ? std::min(apart, nearest) : std::max(away, nearest);
        }
        EXPECT_LE(away, apart) << "a row is farther from those taken than these are from each other";
        EXPECT_LE(away, widest);
    }
}

/// A random walk in a ball of that radius, with bonds of one.
NamedChain walk_in_a_ball(std::size_t beads, double radius) {
    std::mt19937 engine(20260113);
    const auto draw = [&] { return static_cast<double>(engine()) / 0x1p31 - 1; };
    Chain chain;
    append(chain, 0, 0, 0);
    while (chain.size() < beads) {
        const double x = draw(), y = draw(), z = draw(), size = std::hypot(x, y, z);
        if (size > 1 || size < 0.1) continue;
        const ChainAtom& at = chain.back();
        const PointR3 to{at.x + x / size, at.y + y / size, at.z + z / size};
        if (std::hypot(to.x, to.y, to.z) < radius) append(chain, to.x, to.y, to.z);
    }
    return named(chain);
}

NamedChain stretched(NamedChain chain) {
    for (ChainAtom& bead : chain.beads) bead.x += bead.id;
    return chain;
}

/// How much work all stretches were said to take, and whether that came first.
struct Listener : Silent {
    void every_subchain_begins(double work) override { told.push_back(done == 0 ? work : 0); }
    void subchain_closed(std::size_t so_far, std::size_t, double) override {
        done = std::max<std::size_t>(done, so_far);
    }
    std::vector<double> told;
    std::atomic<std::size_t> done = 0;
};

TEST(Fingerprint, TakesLessOfADenseChainAndTellsTheWorkFirst) {
    constexpr std::size_t beads = 1000, few = 1;
    constexpr double dense_radius = 7.0;
    const auto bounded = [](const NamedChain& chain) {
        Silent silent;
        return fingerprint_of("", chain, {few, {}, 2}, silent);
    };
    const ChainFingerprint dense = bounded(walk_in_a_ball(beads, dense_radius)),
                           loose = bounded(stretched(walk_in_a_ball(beads, 1e3)));
    EXPECT_EQ(loose.step, 1) << "no passes, one class";
    EXPECT_GT(dense.step, default_step(beads));
    EXPECT_LT(dense.tested, loose.tested);
    EXPECT_GE(dense.borders_within, dense.step) << "what was left out is said";

    const auto told = [](double radius) {
        Listener listener;
        fingerprint_of("", walk_in_a_ball(120, radius), {few, {1}, 2}, listener);
        EXPECT_EQ(listener.told.size(), 1);
        EXPECT_EQ(listener.done, 117 * 118 / 2);
        return listener.told.empty() ? 0 : listener.told.front();
    };
    EXPECT_GT(told(1e3), 0);
    EXPECT_GT(told(2.0), 2 * told(1e3));
}

TEST(Fingerprint, ClosesUnknottedSubchainsInFewDirectionsByDefault) {
    constexpr std::size_t many = 45, beads = 80;
    const NamedChain chain = walk_in_a_ball(beads, 2.2);
    Silent silent;
    const ChainFingerprint full = fingerprint_of("", chain, {many, {1}, 2}, silent),
                           found = fingerprint_of("", chain, {many, {}, 2}, silent);
    EXPECT_EQ(found.step, 1);
    std::size_t knotted = 0, other_shares = 0;
    full.matrix.for_each_tested([&](Subchain s, const FingerprintMatrix::Cell& cell) {
        const auto& own = found.matrix.at(s);
        ASSERT_EQ(found.knots[own.knot], full.knots[cell.knot]) << s.first << ' ' << s.last;
        knotted += cell.knot > 0;
        if (cell.knot > 0)
            EXPECT_EQ(own.closures, cell.closures) << s.first << ' ' << s.last;
        else
            other_shares += own.closures != cell.closures;
    });
    EXPECT_GT(knotted, 100);
    EXPECT_GT(other_shares, 10);
    EXPECT_EQ(found.share, full.share);
    ASSERT_EQ(found.places.size(), full.places.size());
    for (std::size_t i = 0; i < full.places.size(); ++i) EXPECT_EQ(found.places[i].core, full.places[i].core);
}

/// A walk that comes back to a bead, as models of chains on a lattice or with faults do.
NamedChain touching_walk() {
    NamedChain chain = walk_in_a_ball(45, 1.8);
    chain.beads[30] = chain.beads[8];
    chain.beads[36].z = chain.beads[35].z = std::round(chain.beads[36].z);
    return named(chain.beads);
}

TEST(Fingerprint, ClassesOfADirectionHoldOneKnot) {
    for (const NamedChain& chain : {walk_in_a_ball(60, 2.0), touching_walk(), slipknot()})
        for (const int row : farthest_point_order().first(8)) {
            DirectionClasses classes(chain.beads);
            classes.find(row);
            std::size_t subchains = 0;
            for (std::size_t last = fewest_knotted; last < chain.beads.size(); ++last)
                for (std::size_t first = 0; first + fewest_knotted <= last; ++first, ++subchains) {
                    const std::uint32_t own = classes.classes()[FingerprintMatrix::index({first, last})];
                    const Subchain shortest = classes.shortest()[own];
                    const KnotType knot = own == DirectionClasses::unknotted ? KnotType::unknot()
                                                                             : knot_in_row(chain.beads, shortest, row);
                    ASSERT_LE(shortest.size(), last - first + 1);
                    ASSERT_EQ(knot_in_row(chain.beads, {first, last}, row), knot)
                        << row << ": " << first << ' ' << last << " as " << shortest.first << ' ' << shortest.last;
                }
            EXPECT_LT(classes.shortest().size(), subchains / 2);
        }
}

TEST(Fingerprint, GridsHaveNoBlockLongerThanTheStep) {
    for (std::size_t beads = 5; beads < 40; ++beads)
        for (const std::size_t step : {2U, 3U, 7U}) {
            const SubchainGrid grid(beads, step);
            EXPECT_EQ(grid.blocks().front().longest(), (Subchain{0, beads - 1}));
            for (const Block& b : grid.blocks()) ASSERT_LE(b.span(), step) << beads;
        }
}

TEST(Fingerprint, OfAStretchedChainIsAsSpelledOut) {
    // Far longer than wide: paths leave the box around it soon. They pass the trefoil at its end, too.
    Chain chain;
    append_trefoil(chain, 30, 0, false);
    for (int i = 1; i <= 150; ++i)
        append(chain, chain[29].x + 4 * i, chain[29].y + std::sin(2.0 * i), chain[29].z + std::cos(2.0 * i));
    const ChainFingerprint found = fingerprint(named(chain), 40);
    std::set<KnotType> knots;
    found.matrix.for_each_tested([&](Subchain s, const FingerprintMatrix::Cell& cell) {
        if (s.size() < fewest_knotted) return;
        const auto [knot, count] = judged(chain, s);
        EXPECT_EQ(found.knots[cell.knot], knot) << s.first << ' ' << s.last;
        EXPECT_EQ(cell.closures, count) << s.first << ' ' << s.last;
        knots.insert(knot);
    });
    EXPECT_GE(knots.size(), 2);
}

TEST(Fingerprint, KeepsTheFirstClosureThatGivesTheKnot) {
    const NamedChain chain = knot_in_the_middle();
    const ChainFingerprint found = fingerprint(chain, 7);
    Silent silent;
    const auto closed = [&](std::size_t most, unsigned threads) {
        return typical_closures(chain.beads, found, shown_subchains(found, found.places, most), threads, silent);
    };
    const std::vector<TypicalClosure> all = closed(SIZE_MAX, 2), few = closed(30, 1);
    EXPECT_EQ(all.front().subchain, found.matrix.whole_chain());
    EXPECT_EQ(all[1].subchain, *found.places.front().core);
    EXPECT_GT(few.size(), 10);
    EXPECT_LE(few.size(), 32);
    EXPECT_GT(few.back().subchain.first, chain.beads.size() / 2) << "spread evenly";
    EXPECT_EQ(all.size(), found.tested);
    std::set<KnotType> knots;
    for (const TypicalClosure& typical : all) {
        const Subchain& s = typical.subchain;
        const KnotType& knot = found.knots[found.matrix.at(s).knot];
        ASSERT_EQ(typical.knot, knot) << s.first << ' ' << s.last;
        knots.insert(knot);
        for (const int row : farthest_point_order()) {
            const bool is_knot = knot_in_row(chain.beads, s, row) == knot;
            ASSERT_EQ(is_knot, row == typical.row) << s.first << ' ' << s.last << " in " << row;
            if (is_knot) break;
        }
        Chain loop;
        for (const std::size_t bead : typical.left) {
            ASSERT_TRUE(bead >= chain.beads.size() || (s.first <= bead && bead <= s.last));
            loop.push_back(bead < chain.beads.size() ? chain.beads[bead]
                                                     : typical.closing.at(bead - chain.beads.size()));
        }
        EXPECT_EQ(knot_of(loop).type, knot);
    }
    EXPECT_EQ(knots.size(), 2);
}

TEST(Fingerprint, RefusesWhatCannotBeAndStopsWhenAsked) {
    EXPECT_THROW(FingerprintMatrix(100'000, 1'000'000'000), std::length_error);
    Silent silent;
    EXPECT_THROW(fingerprint_of("", named({}), {}, silent), std::invalid_argument);
    FingerprintPlan plan;
    plan.closures = 401;
    EXPECT_THROW(fingerprint_of("", slipknot(), plan, silent), std::invalid_argument);
    for (int beads = 1; beads <= 4; ++beads) {
        Chain chain;
        append_trefoil(chain, beads + 1, 0, false);
        chain.resize(static_cast<std::size_t>(beads));
        EXPECT_EQ(fingerprint(named(chain), 0).knot, KnotType::unknot()) << beads;
    }
    struct Impatient : FingerprintWatcher {
        void subchain_closed(std::size_t done, std::size_t planned, double) override {
            EXPECT_LE(done, planned);
            if (done >= 5) throw std::runtime_error("enough");
        }
    } impatient;
    EXPECT_THROW(fingerprint_of("", slipknot(), {closures, {1}, 2}, impatient), std::runtime_error);
    const ChainFingerprint found = fingerprint(slipknot(), 7);
    EXPECT_THROW(typical_closures(slipknot().beads, found, shown_subchains(found, {}, 100), 2, impatient),
                 std::runtime_error);
}

} // namespace
