// Links of the table, and how several polygons are linked.
#include "support/chains.hpp"
#include "support/conway.hpp"

#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/links.hpp"
#include "knots/table.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace {

using namespace loopwise::knots;

std::string name_of(const LinkRow& row) {
    return text(KnotType::named({{{row.crossings, row.number, Hand::none, row.loops}}}, true));
}

std::string without_hand(const KnotType& type) {
    const std::string name = text(type);
    return name.substr(name[0] == '+' || name[0] == '-' ? 1 : 0);
}

/// What a link is called in tables that give Conway's notation.
const std::map<std::string, std::string> links_in_conways_notation{
    {"2^2_1", "2"},           {"4^2_1", "4"},           {"5^2_1", "212"},       {"6^2_1", "6"},
    {"6^2_2", "33"},          {"6^2_3", "222"},         {"7^2_1", "412"},       {"7^2_2", "3112"},
    {"7^2_3", "232"},         {"7^2_4", "3,2,2"},       {"7^2_5", "21,2,2"},    {"7^2_7", "3,2,2-"},
    {"7^2_8", "21,2,2-"},     {"8^2_1", "8"},           {"8^2_2", "53"},        {"8^2_3", "422"},
    {"8^2_4", "323"},         {"8^2_5", "3122"},        {"8^2_6", "242"},       {"8^2_7", "21212"},
    {"8^2_8", "211112"},      {"8^2_9", "22,2,2"},      {"8^2_10", "211,2,2"},  {"8^2_11", "3,2,2+"},
    {"8^2_12", "21,2,2+"},    {"8^2_15", "22,2,2-"},    {"8^2_16", "211,2,2-"}, {"6^3_1", "2,2,2"},
    {"6^3_3", "2,2,2-"},      {"7^3_1", "2,2,2+"},      {"8^3_1", "4,2,2"},     {"8^3_2", "31,2,2"},
    {"8^3_3", "2,2,2++"},     {"8^3_4", "(2,2)(2,2)"},  {"8^3_7", "4,2,2-"},    {"8^3_8", "31,2,2-"},
    {"8^3_9", "(2,2)(2,2-)"}, {"8^3_10", "(2,2)-(2,2)"}};

TEST(Conway, NotationGivesTheKnotsOfTheTable) {
    const std::pair<const char*, const char*> knots[] = {{"3_1", "3"},
                                                         {"4_1", "22"},
                                                         {"5_2", "32"},
                                                         {"6_2", "312"},
                                                         {"6_3", "2112"},
                                                         {"7_6", "2212"},
                                                         {"8_10", "3,21,2"},
                                                         {"8_20", "3,21,2-"},
                                                         {"9_24", "3,21,2+"},
                                                         {"9_42", "22,3,2-"},
                                                         {"9_48", "21,21,21-"},
                                                         {"10_75", "21,21,21+"},
                                                         {"10_79", "(3,2)(3,2)"},
                                                         {"10_150", "(21,2)(3,2-)"},
                                                         {"10_152", "(3,2)-(3,2)"},
                                                         {"10_153", "(3,2)-(21,2)"}};
    for (const auto& [name, symbol] : knots)
        EXPECT_EQ(without_hand(knot_of(conway::diagram(symbol)).type), name) << symbol;
    EXPECT_EQ(without_hand(knot_of(conway::octahedron({"2", "2", "1", "1", "1", "1"}, {})).type), "8_17");
}

TEST(LinkTable, HoldsTheLinksThatConwaysNotationGives) {
    std::map<std::string, Diagram> diagrams;
    for (const auto& [name, symbol] : links_in_conways_notation) diagrams[name] = conway::diagram(symbol);
    diagrams["6^3_2"] = conway::octahedron({"1", "1", "1", "1", "1", "1"}, {});
    diagrams["7^2_6"] = conway::octahedron({"2", "1", "1", "1", "1", "1"}, {});
    diagrams["8^2_13"] = conway::octahedron({"21", "1", "1", "1", "1", "1"}, {});
    diagrams["8^3_5"] = conway::octahedron({"3", "1", "1", "1", "1", "1"}, {});
    diagrams["8^2_14"] = conway::octahedron({"2", "1", "1", "2", "1", "1"}, {true});
    diagrams["8^3_6"] = conway::octahedron({"2", "1", "1", "2", "1", "1"}, {});
    EXPECT_EQ(diagrams.size(), link_rows.size());
    for (const LinkRow& row : link_rows) {
        const std::string name = name_of(row);
        SCOPED_TRACE(name);
        const KnotType drawn = link_of(diagrams.at(name)).type, own = link_of(closed_braid(row.strands, row.word)).type;
        EXPECT_EQ(without_hand(drawn), name);
        EXPECT_EQ(without_hand(own), name);
        EXPECT_TRUE(drawn.proven && own.proven);
    }
}

TEST(LinkTable, HasThePublishedDeterminantsAndLinkingNumbers) {
    for (const auto& [name, symbol] : links_in_conways_notation) {
        if (!std::all_of(symbol.begin(), symbol.end(), [](unsigned char c) { return std::isdigit(c) != 0; })) continue;
        // That of the two-bridge link p/q is p.
        std::int64_t p = 1, q = 0;
        for (const char twists : symbol) p = std::exchange(q, p) + (twists - '0') * p;
        EXPECT_EQ(determinant(*jones(conway::diagram(symbol))), p) << name;
    }
    std::vector<std::string> not_linked;
    for (const LinkRow& row : link_rows)
        if (row.loops == 2 && closed_braid(row.strands, row.word).linking_number(0, 1) == 0)
            not_linked.push_back(name_of(row));
    EXPECT_EQ(not_linked, (std::vector<std::string>{"5^2_1", "7^2_3", "7^2_4", "7^2_6", "7^2_8", "8^2_10", "8^2_12",
                                                    "8^2_13", "8^2_15"}));
}

/// Of sums, and of loops that come apart: everything that can be drawn with so few crossings.
struct Composed {
    int crossings, loops;
    Laurent jones;
    std::vector<int> numbers; ///< without signs, sorted
    std::string name;
};

Composed composed(const Composed& a, const Composed& b, bool apart) {
    Composed both{a.crossings + b.crossings, a.loops + b.loops - (apart ? 0 : 1), *product(a.jones, b.jones), a.numbers,
                  apart ? a.name + " and " + b.name : a.name + " # " + b.name};
    if (apart) both.jones = *product(both.jones, {-1, {-1, -1}});
    both.numbers.insert(both.numbers.end(), b.numbers.begin(), b.numbers.end());
    both.numbers.resize(static_cast<std::size_t>(both.loops * (both.loops - 1) / 2), 0);
    std::sort(both.numbers.begin(), both.numbers.end());
    return both;
}

/// What link_of() takes for granted when it calls a name proven.
TEST(LinkTable, IsToldFromAllSumsAndFromWhatComesApart) {
    std::vector<Composed> primes, all{{0, 1, Laurent::one(), {}, "0_1"}};
    for (std::size_t row = 0; row < braid_rows.size(); ++row)
        for (const TableKnot& hand : hands_of(row))
            if (hand.knot.crossings <= table_link_crossings)
                primes.push_back({hand.knot.crossings, 1, hand.jones, {}, text(KnotType::named({{hand.knot}}, true))});
    for (const LinkRow& row : link_rows)
        for (const bool mirror : {false, true}) {
            const Diagram diagram = closed_braid(row.strands, row.word);
            const Laurent v = *jones(diagram);
            if (mirror && v == mirrored(v)) continue;
            std::vector<int> numbers;
            for (int i = 0; i < row.loops; ++i)
                for (int j = 0; j < i; ++j) numbers.push_back(std::abs(diagram.linking_number(i, j)));
            std::sort(numbers.begin(), numbers.end());
            primes.push_back(
                {row.crossings, row.loops, mirror ? mirrored(v) : v, numbers, name_of(row) + (mirror ? "*" : "")});
        }
    const std::size_t prime_count = primes.size();
    // Sums, each factor no earlier than those before it; then what comes apart.
    std::vector<std::pair<Composed, std::size_t>> sums{{all.front(), 0}};
    for (std::size_t i = 0; i < sums.size(); ++i)
        for (std::size_t k = sums[i].second; k < prime_count; ++k)
            if (sums[i].first.crossings + primes[k].crossings <= table_link_crossings &&
                sums[i].first.loops + primes[k].loops <= 4)
                sums.push_back({composed(sums[i].first, primes[k], false), k});
    std::vector<std::pair<Composed, std::size_t>> pieces;
    for (std::size_t k = 0; k < sums.size(); ++k) pieces.push_back({sums[k].first, k});
    for (std::size_t i = 0; i < pieces.size(); ++i)
        for (std::size_t k = pieces[i].second; k < sums.size(); ++k)
            if (pieces[i].first.crossings + sums[k].first.crossings <= table_link_crossings &&
                pieces[i].first.loops + sums[k].first.loops <= 3)
                pieces.push_back({composed(pieces[i].first, sums[k].first, true), k});
    std::map<std::tuple<int, std::string, std::vector<int>>, std::string> names;
    for (const auto& [link, last] : pieces) {
        if (link.loops < 2 || link.loops > 3) continue;
        const auto [place, is_new] = names.try_emplace({link.loops, text(link.jones), link.numbers}, link.name);
        EXPECT_TRUE(is_new || link.name.find(' ') != std::string::npos) << link.name << " and " << place->second;
        EXPECT_TRUE(is_new || place->second.find(' ') != std::string::npos) << link.name << " and " << place->second;
    }
    EXPECT_GT(names.size(), 300U);
}

Chain sampled(int beads, PointR3 (*curve)(double), PointR3 shift = {0, 0, 0}) {
    Chain chain;
    for (int i = 0; i < beads; ++i) {
        const PointR3 p = curve(2 * M_PI * (i + 0.3) / beads);
        chain.push_back({p.x + shift.x, p.y + shift.y, p.z + shift.z, i + 1});
    }
    return chain;
}
PointR3 ring(double t) { return {std::cos(t), std::sin(t), 0.1 * std::sin(3 * t)}; }
PointR3 standing_ring(double t) { return {std::cos(t), 0.1 * std::sin(2 * t), std::sin(t)}; }
PointR3 eight(double t) { return {2 * std::cos(t), std::sin(2 * t), std::sin(t) + 1.3 * std::sin(3 * t)}; }

struct Known {
    Structure loops;
    std::string all;
    std::vector<std::string> pairs;
    std::vector<int> numbers; ///< without signs
};

/// Zeros do not mean that nothing is linked.
TEST(Structures, AreNamedAsAWholeAndInPairs) {
    const Chain flat = sampled(40, ring), far = sampled(30, ring, {9, 1, 2}), figure = sampled(200, eight);
    const auto ellipse = [](int axis) {
        Chain chain;
        for (int i = 0; i < 40; ++i) {
            const double t = 2 * M_PI * (i + 0.3) / 40, p[] = {2 * std::cos(t), std::sin(t), 0};
            const auto at = [&](int k) { return p[(k + axis) % 3]; };
            chain.push_back({at(0), at(1), at(2), i + 1});
        }
        return chain;
    };
    const Known known[] = {
        {{ellipse(0), ellipse(1), ellipse(2)}, "6^3_2", {"0^2_1", "0^2_1", "0^2_1"}, {0, 0, 0}},
        {{flat, figure, far}, "-5^2_1, 0_1 apart", {"-5^2_1", "0^2_1", "0^2_1"}, {0, 0, 0}},
        {{flat, sampled(40, standing_ring, {1, 0, 0}), sampled(40, ring, {2, 0, 0.05})},
         "2^2_1 # 2^2_1",
         {"2^2_1", "0^2_1", "2^2_1"},
         {1, 0, 1}},
        {{flat, far, sampled(30, ring, {-9, 1, 5})}, "0^3_1", {"0^2_1", "0^2_1", "0^2_1"}, {0, 0, 0}},
        {{flat, sampled(40, standing_ring, {1, 0, 0}), far, sampled(40, standing_ring, {10, 1, 2})},
         "2^2_1, 2^2_1 apart",
         {"2^2_1", "0^2_1", "0^2_1", "0^2_1", "0^2_1", "2^2_1"},
         {1, 0, 0, 0, 0, 1}}};
    for (const auto& [loops, all, pairs, numbers] : known) {
        SCOPED_TRACE(all);
        for (const bool reduced : {false, true}) {
            Structure structure = loops;
            if (reduced) ChainsReduce(structure, true);
            const Linking linking =
                linking_of(std::vector<std::span<const ChainAtom>>(structure.begin(), structure.end()));
            EXPECT_EQ(text(linking.all), all);
            for (std::size_t i = 0; i < pairs.size(); ++i) {
                EXPECT_EQ(text(linking.pairs.at(i)), pairs[i]) << i;
                EXPECT_EQ(std::abs(linking.numbers.at(i)), numbers[i]) << i;
            }
        }
    }
}

} // namespace
