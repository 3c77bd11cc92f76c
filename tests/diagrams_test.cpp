// What a diagram tells without its polynomials: factors, colourings, the signature.
#include "support/chains.hpp"
#include "support/effort.hpp"

#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/colourings.hpp"
#include "knots/factors.hpp"
#include "knots/invariants.hpp"
#include "knots/signature.hpp"
#include "knots/simplify.hpp"
#include "knots/view.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace {

using namespace loopwise::knots;
/// Of the mirror image: capitals for small letters.
std::string mirror_word(std::string_view word) {
    std::string mirror;
    for (const char letter : word) mirror += static_cast<char>(letter ^ ('a' ^ 'A'));
    return mirror;
}

/// The connected sum: the second braid stands to the right of the first and shares one strand with it.
Diagram sum_of(std::initializer_list<BraidRow> rows) {
    int strands = 1;
    std::string all;
    for (const BraidRow& row : rows) {
        for (const char letter : row.word) all += static_cast<char>(letter + strands - 1);
        strands += row.strands - 1;
    }
    return closed_braid(strands, all);
}

const BraidRow& row_of(int crossings, int number) {
    return *std::find_if(braid_rows.begin(), braid_rows.end(),
                         [=](const BraidRow& r) { return r.crossings == crossings && r.number == number; });
}
std::string name_of(const BraidRow& row) { return std::to_string(row.crossings) + '_' + std::to_string(row.number); }

/// First a, then b.
Permutation followed(const Permutation& a, const Permutation& b) {
    Permutation result{};
    for (std::size_t i = 0; i < a.size(); ++i) result[i] = b[a[i]];
    return result;
}
Permutation inverse(const Permutation& a) {
    Permutation result{};
    for (std::size_t i = 0; i < a.size(); ++i) result[a[i]] = static_cast<std::uint8_t>(i);
    return result;
}

/// The definition, tried out on all tuples: strands of a braid carry permutations, and a strand that passes below
/// another is conjugated by it.
std::vector<std::int64_t> plain_counts(int strands, std::string_view word, const ConjugacyClass& colours) {
    const Permutation &x = colours.member(0), unit = followed(x, inverse(x));
    const auto places = static_cast<std::size_t>(strands);
    std::vector<std::size_t> tuple(places, 0);
    std::map<Permutation, std::int64_t> counts; // by the longitude
    for (std::size_t k = 0; k < places;) {
        std::vector<Permutation> now, passed(places, unit); // passed: what a strand has passed below
        std::vector<std::size_t> owner;                     // the strand at a place
        for (const std::size_t member : tuple) now.push_back(colours.member(member)), owner.push_back(owner.size());
        Permutation framing = unit;
        for (const char letter : word) {
            const bool positive = letter >= 'a';
            const auto left = static_cast<std::size_t>(letter - (positive ? 'a' : 'A'));
            const std::size_t over = positive ? left : left + 1, under = positive ? left + 1 : left;
            const Permutation above = now[over], by = positive ? above : inverse(above);
            now[over] = followed(inverse(by), followed(now[under], by));
            now[under] = above;
            passed[owner[under]] = followed(passed[owner[under]], by);
            framing = followed(framing, positive ? inverse(x) : x);
            std::swap(owner[left], owner[left + 1]);
        }
        bool closes = true;
        for (std::size_t place = 0; place < places; ++place)
            closes = closes && now[place] == colours.member(tuple[place]);
        Permutation longitude = unit;
        std::size_t strand = 0;
        do {
            longitude = followed(longitude, passed[strand]);
            strand = static_cast<std::size_t>(std::find(owner.begin(), owner.end(), strand) - owner.begin());
        } while (strand != 0);
        if (closes) ++counts[followed(longitude, framing)];
        for (k = 1; k < places && ++tuple[k] == colours.size(); ++k) tuple[k] = 0;
    }
    std::vector<std::int64_t> result;
    Permutation power = unit;
    do {
        result.push_back(counts[power]);
        power = followed(power, x);
    } while (power != unit);
    return result;
}

TEST(Colourings, AreThoseThatTheDefinitionCounts) {
    for (const BraidRow& row : braid_rows) {
        if (row.strands > 3) continue;
        SCOPED_TRACE(name_of(row));
        const Diagram diagram = closed_braid(row.strands, row.word);
        for (const ConjugacyClass& colours : colouring_classes()) {
            if (colours.size() > 30 && effort::sanitized) continue;
            EXPECT_EQ(colourings(diagram, {&colours, 1})->front(), plain_counts(row.strands, row.word, colours));
        }
    }
}

/// With both polynomials they tell all knots of the table apart, and with the Jones polynomial every knot from its
/// mirror image, but for those that are their own.
TEST(Colourings, TellTheKnotsOfTheTableAndTheirHands) {
    std::map<std::tuple<std::string, std::string, Colourings>, std::string> knots;
    int own_mirror_images = 0;
    for (const BraidRow& row : braid_rows) {
        SCOPED_TRACE(name_of(row));
        const Diagram drawn = closed_braid(row.strands, row.word);
        Diagram diagram = drawn, rerouted = drawn;
        simplify(diagram, 0);
        Draw draw;
        for (int i = 0; i < 100; ++i) reroute_at_random(rerouted, draw);
        const Colourings counts = *colourings(diagram);
        EXPECT_EQ(colourings(rerouted), counts);
        const Diagram other = closed_braid(row.strands, mirror_word(row.word));
        EXPECT_EQ(colourings(other), mirrored(counts));
        const Laurent v = *jones(diagram);
        ASSERT_EQ(jones(rerouted), v);
        EXPECT_TRUE(knots.emplace(std::tuple{text(v), text(*alexander(diagram)), counts}, name_of(row)).second);
        const bool mirror =
            knots.emplace(std::tuple{text(*jones(other)), text(*alexander(other)), mirrored(counts)}, name_of(row))
                .second;
        own_mirror_images += !mirror;
    }
    EXPECT_EQ(own_mirror_images,
              20); // as published: one of four crossings, one of six, five of eight, 13 of ten
}

TEST(Signatures, AgreeWithThePolynomialsAndWithTorusKnots) {
    const auto torus = [](int p, int q) {
        std::string word;
        for (int turn = 0; turn < q; ++turn)
            for (int k = 1; k < p; ++k) word += static_cast<char>('a' + k - 1);
        return closed_braid(p, word);
    };
    for (const auto& [p, q] : {std::pair{2, 3}, {2, 9}, {3, 4}, {3, 5}, {3, 7}, {4, 5}, {4, 7}, {5, 6}}) {
        int sum = 0; // Brieskorn's count for the singularity x^p + y^q + z^2
        for (int i = 1; i < p; ++i)
            for (int j = 1; j < q; ++j) {
                const int twice = 2 * (i * q + j * p);
                sum += p * q < twice && twice < 3 * p * q ? -1 : 1;
            }
        EXPECT_EQ(signature(torus(p, q)), sum) << p << ", " << q;
    }
    EXPECT_EQ(signature(Diagram{}), 0);
    for (const BraidRow& row : braid_rows) {
        SCOPED_TRACE(name_of(row));
        Diagram diagram = closed_braid(row.strands, row.word);
        const int value = *signature(diagram);
        EXPECT_EQ(signature(closed_braid(row.strands, mirror_word(row.word))), -value);
        simplify(diagram, 0);
        EXPECT_EQ(signature(diagram), value);
        // Murasugi: the Alexander polynomial at -1 has the sign of (-1)^(signature / 2).
        const Laurent delta = *alexander(diagram);
        std::int64_t sum = 0;
        for (std::size_t i = 0; i < delta.coefficients.size(); ++i)
            sum += (delta.twice_lowest / 2 + static_cast<int>(i)) % 2 == 0 ? delta.coefficients[i]
                                                                           : -delta.coefficients[i];
        EXPECT_EQ(sum > 0, value % 4 == 0);
    }
    EXPECT_EQ(signature(sum_of({row_of(7, 1), row_of(5, 2), row_of(3, 1)})), 6 + 2 + 2);
    chains::Random random(91);
    for (int i = 0; i < 100 / effort::less; ++i) {
        const Chain ring = chains::make(chains::Kind::tangle, 10 + i % 12, random);
        const std::array<std::span<const ChainAtom>, 1> loops{ring};
        const Diagram raw = project_diagram(loops).diagram;
        Diagram diagram = raw;
        simplify(diagram, 0);
        if (signature(raw)) {
            EXPECT_EQ(signature(raw), signature(diagram)) << chains::text(ring);
        }
    }
}

TEST(Factors, OfSumsAreFoundHoweverManyThereAre) {
    const auto check = [](std::initializer_list<BraidRow> rows) {
        Diagram diagram = sum_of(rows);
        Laurent all = Laurent::one();
        std::vector<std::string> expected, found;
        for (const BraidRow& row : rows) expected.push_back(text(*jones(closed_braid(row.strands, row.word))));
        for (const Factor& factor : factors_of(diagram, 0, 1000)) {
            found.push_back(text(*jones(factor.diagram)));
            EXPECT_EQ(factor.diagram.loops, 1);
            EXPECT_EQ(factor.loops, std::vector<int>{0});
        }
        std::sort(expected.begin(), expected.end());
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, expected);
    };
    for (std::size_t i = 0; i + 4 < braid_rows.size(); i += 5 * effort::less) {
        const BraidRow *a = &braid_rows[i], *b = &braid_rows[(7 * i + 1) % braid_rows.size()];
        SCOPED_TRACE(name_of(*a) + " and " + name_of(*b));
        check({*a});
        check({*a, *b});
        check({*a, *b, a[1], *a, a[2]});
    }
    check({row_of(3, 1), row_of(3, 1), row_of(3, 1), row_of(3, 1), row_of(3, 1), row_of(3, 1), row_of(3, 1)});
    EXPECT_TRUE(factors_of(closed_braid(3, "aB"), 0).empty());
}

TEST(Factors, OfLinksKnowTheirLoops) {
    // A ring, a second one linked to it that is also a trefoil, a third that is linked to the second; one apart.
    const Diagram chain = closed_braid(5, "aabbbcc");
    ASSERT_EQ(chain.loops, 4);
    std::vector<std::vector<int>> loops;
    for (const Factor& factor : factors_of(chain, 0)) {
        EXPECT_EQ(factor.diagram.loops, static_cast<int>(factor.loops.size()));
        EXPECT_EQ(factor.diagram.size(), factor.loops.size() == 2 ? 2 : 3);
        loops.push_back(factor.loops);
        std::sort(loops.back().begin(), loops.back().end());
    }
    std::sort(loops.begin(), loops.end());
    EXPECT_EQ(loops, (std::vector<std::vector<int>>{{0, 1}, {1}, {1, 2}}));
}

} // namespace
