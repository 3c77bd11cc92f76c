// How far names reach: knots of the table and their sums in disguise, and random polygons.
//
//     build/release/bench/names disguises 20     both hands of every knot, so many disguises each
//     build/release/bench/names sums 1000        sums of two to five knots, so many in all
//     build/release/bench/names polygons 300 10000
#include "disguises.hpp"
#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/colourings.hpp"
#include "knots/factors.hpp"
#include "knots/knot.hpp"
#include "knots/table.hpp"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <map>

namespace {

using namespace loopwise::knots;

struct Known {
    KnotType type;
    Chain polygon;
};

/// Named by the published exponents; where these do not tell the hand, as the braid itself is named.
Known known(const BraidRow& row, bool mirror) {
    std::string word(row.word);
    if (mirror)
        for (char& letter : word) letter = static_cast<char>(letter ^ ('a' ^ 'A'));
    const int exponents = (row.lowest + row.highest) * (mirror ? -1 : 1);
    const Hand hand = exponents > 0 ? Hand::right : Hand::left;
    return {exponents == 0 ? knot_of(closed_braid(row.strands, word)).type
                           : KnotType::named({{{row.crossings, row.number, hand}}}, true),
            disguises::braid_polygon(row.strands, word)};
}

/// Classes that naming does not use: elements of orders 5 and 4 of the alternating group A6.
std::span<const ConjugacyClass> other_classes() {
    constexpr Permutation five{1, 2, 3, 4, 0, 5, 6}, four{1, 2, 3, 0, 5, 4, 6}, three{0, 1, 2, 4, 5, 3, 6};
    static const std::array classes{ConjugacyClass({five, three}), ConjugacyClass({four, five, three})};
    return classes;
}

/// By the other classes; nothing where the published exponents do not tell the hand.
std::optional<Colourings> other_colourings(const KnotSum& sum) {
    std::optional<Colourings> all = colourings(Diagram{}, other_classes());
    for (const PrimeKnot& knot : sum) {
        const BraidRow& row = braid_rows[row_of(knot)];
        static std::map<std::size_t, std::optional<Colourings>> memory;
        const auto [place, is_new] = memory.try_emplace(row_of(knot));
        if (is_new) place->second = colourings(closed_braid(row.strands, row.word), other_classes());
        const int exponents = row.lowest + row.highest;
        if (!all || !place->second || (exponents == 0 && knot.hand != Hand::none)) return {};
        const bool own = knot.hand == Hand::none || (knot.hand == Hand::right) == (exponents > 0);
        all = product(*all, own ? *place->second : mirrored(*place->second));
    }
    return all;
}

enum class Check { agrees, differs, unchecked };

/// Whether the name has the polygon's colourings by classes that naming does not use.
Check check(const KnotSum& name, const Chain& polygon) {
    const std::array<std::span<const ChainAtom>, 1> loops{polygon};
    std::optional<Colourings> all = colourings(Diagram{}, other_classes());
    for (const Factor& factor : factors_of(project_diagram(loops).diagram, 0)) {
        const std::optional<Colourings> own = colourings(factor.diagram, other_classes());
        if (!own || !all) return Check::unchecked;
        all = product(*all, *own);
    }
    const std::optional<Colourings> named = other_colourings(name);
    if (!all || !named) return Check::unchecked;
    return *all == *named ? Check::agrees : Check::differs;
}

/// One line of counts.
class Tally {
  public:
    void add(const std::string& what) { ++counts_[what]; }
    void print(const std::string& title, const std::vector<std::string>& order) {
        std::cout << title << ':';
        for (const std::string& what : order) std::cout << ' ' << what << ' ' << counts_[what] << ';';
        std::cout << std::endl;
    }

  private:
    std::map<std::string, int> counts_;
};

const std::vector<std::string> outcomes{"right", "right but not proven", "several", "unknown", "false"};

/// What came of a polygon whose name is known.
std::string outcome(const KnotType& expected, const Chain& polygon, bool list) {
    const KnotName found = knot_of(polygon);
    const std::vector<KnotSum>& names = found.type.candidates;
    const bool among = std::find(names.begin(), names.end(), expected.candidates.front()) != names.end();
    const std::string result = found.type.status != KnotStatus::named ? "unknown"
                               : !among                               ? "false"
                               : names.size() > 1                     ? "several"
                               : found.type.proven                    ? "right"
                                                                      : "right but not proven";
    if (list && result != "right")
        std::cout << "  " << text(expected) << ": " << result << ", " << text(found.type) << " (" << found.crossings
                  << " crossings)\n";
    return result;
}

void disguised_knots(int count, bool list) {
    chains::Random random(31);
    Tally tally;
    for (const BraidRow& row : braid_rows)
        for (const bool mirror : {false, true}) {
            const Known knot = known(row, mirror);
            for (int i = 0; i < count; ++i)
                tally.add(outcome(knot.type, disguises::disguised(knot.polygon, 60, random), list));
        }
    tally.print(std::to_string(count) + " disguises of each hand of each knot of the table", outcomes);
}

void disguised_sums(int count, bool list) {
    chains::Random random(32);
    for (int terms = 2; terms <= 5; ++terms) {
        Tally tally;
        for (int i = 0; i < count / 4; ++i) {
            Chain polygon;
            KnotType all = KnotType::unknot();
            for (int k = 0; k < terms; ++k) {
                const int row = random.below(static_cast<int>(braid_rows.size()));
                const Known knot = known(braid_rows[static_cast<std::size_t>(row)], random.below(2) == 0);
                all = KnotType::sum(all, knot.type);
                polygon = k == 0 ? knot.polygon : chains::sum(std::move(polygon), knot.polygon);
            }
            tally.add(outcome(all, disguises::disguised(std::move(polygon), 60, random), list));
        }
        tally.print(std::to_string(terms) + " knots summed", outcomes);
    }
}

void random_polygons(int edges, int count, bool list) {
    chains::Random random(33);
    Tally tally, checks;
    std::clock_t time = 0;
    for (int i = 0; i < count; ++i) {
        const Chain polygon = disguises::random_polygon(edges, random);
        const std::clock_t start = std::clock();
        const KnotName name = knot_of(polygon);
        time += std::clock() - start;
        const KnotType& type = name.type;
        const std::string result = type.status == KnotStatus::unknown ? "unknown"
                                   : type.status != KnotStatus::named ? "too complex"
                                   : type.candidates.size() > 1       ? "several"
                                   : type.proven                      ? "proven"
                                                                      : "not proven";
        tally.add(result);
        bool differs = false;
        if (type.status == KnotStatus::named && type.candidates.size() == 1) {
            const Check found = check(type.candidates.front(), polygon);
            differs = found == Check::differs;
            checks.add(differs ? "false" : found == Check::agrees ? "agree" : "unchecked");
        }
        if (list && (result != "proven" || differs))
            std::cout << "  " << i << ": " << result << (differs ? ", false" : "") << ", " << text(type) << " ("
                      << name.crossings << " crossings)\n";
    }
    tally.print(std::to_string(count) + " random polygons of " + std::to_string(edges) + " edges",
                {"proven", "not proven", "several", "unknown", "too complex"});
    checks.print("    single names by other colourings", {"agree", "unchecked", "false"});
    std::cout << "    " << std::fixed << std::setprecision(3)
              << 1e3 * static_cast<double>(time) / CLOCKS_PER_SEC / count << " ms a polygon\n";
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words(argv + 1, argv + argc);
    const bool list = !words.empty() && words.back() == "list";
    if (list) words.pop_back();
    const auto number = [&](std::size_t i) { return std::atoi(words[i].c_str()); };
    if (words.size() == 2 && words[0] == "disguises")
        disguised_knots(number(1), list);
    else if (words.size() == 2 && words[0] == "sums")
        disguised_sums(number(1), list);
    else if (words.size() == 3 && words[0] == "polygons")
        random_polygons(number(1), number(2), list);
    else {
        std::cerr << "usage: names disguises COUNT | sums COUNT | polygons EDGES COUNT [list]\n";
        return EXIT_FAILURE;
    }
}
