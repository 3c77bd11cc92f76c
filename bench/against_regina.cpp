// Compares the polynomials of knots and links with those of Regina (Debian: regina-normal-dev), which computes them
// from the diagrams as drawn, before any move of ours.
//
//     cmake --preset release -DLOOPWISE_REGINA=ON && cmake --build --preset release --target against_regina
//     build/release/bench/against_regina
#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/invariants.hpp"
#include "knots/links.hpp"
#include "knots/simplify.hpp"
#include "support/chains.hpp"

#include <link/link.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>

namespace {

using loopwise::knots::Diagram, loopwise::knots::Laurent;

struct Count {
    int diagrams = 0, different = 0, most_crossings = 0;
};

regina::Link their_link(const Diagram& diagram) {
    // Planar diagram code: strands are numbered; at each crossing from the strand that comes in below,
    // counterclockwise.
    std::vector<long> strand(diagram.mate.size(), 0);
    long next = 0;
    for (std::size_t start = 0; start < strand.size(); ++start)
        for (auto d = static_cast<loopwise::knots::Dart>(start);
             diagram.is_out(d) && strand[static_cast<std::size_t>(d)] == 0;
             d = loopwise::knots::opposite(diagram.across(d))) {
            strand[static_cast<std::size_t>(d)] = ++next;
            strand[static_cast<std::size_t>(diagram.across(d))] = next;
        }
    std::vector<std::array<long, 4>> code;
    for (std::size_t c = 0; c < diagram.crossings.size(); ++c)
        code.push_back({strand[4 * c], strand[4 * c + 1], strand[4 * c + 2], strand[4 * c + 3]});
    return regina::Link::fromPD(code.begin(), code.end());
}

/// Regina's variable is the square root of t.
Laurent jones_by(const regina::Link& link) {
    const auto& theirs = link.jones();
    Laurent result{static_cast<int>(theirs.minExp()), {}};
    for (long e = theirs.minExp(); e <= theirs.maxExp(); e += 2) result.coefficients.push_back(theirs[e].longValue());
    return result;
}

/// The HOMFLY polynomial at alpha = 1 and z^2 = t - 2 + 1/t.
Laurent alexander_by(const regina::Link& link) {
    const auto& homfly = link.homflyAZ();
    const auto crossings = static_cast<long>(link.size()); // no exponent is larger than twice that
    std::vector<std::int64_t> sum(1, 0);
    std::vector<std::int64_t> power{1}; // of t - 2 + 1/t
    for (long z = 0; z <= crossings; z += 2) {
        std::int64_t coefficient = 0;
        for (long a = -2 * crossings; a <= 2 * crossings; ++a) coefficient += homfly(a, z).longValue();
        if (sum.size() < power.size()) {
            sum.insert(sum.begin(), 0);
            sum.push_back(0);
        }
        for (std::size_t i = 0; i < power.size(); ++i) sum[i] += coefficient * power[i];
        std::vector<std::int64_t> higher(power.size() + 2, 0);
        for (std::size_t i = 0; i < power.size(); ++i) {
            higher[i] += power[i];
            higher[i + 1] -= 2 * power[i];
            higher[i + 2] += power[i];
        }
        power = std::move(higher);
    }
    Laurent result{1 - static_cast<int>(sum.size()), std::move(sum)};
    loopwise::knots::trim(result);
    return result;
}

void compare(const std::string& name, const Diagram& drawn, bool homfly, Count& count) {
    ++count.diagrams;
    count.most_crossings = std::max(count.most_crossings, drawn.size());
    const regina::Link link = their_link(drawn);
    Diagram diagram = drawn;
    loopwise::knots::simplify(diagram, 0);
    std::optional<Laurent> jones = loopwise::knots::jones(diagram);
    if (jones && drawn.loops == 2) jones->twice_lowest += 3 * diagram.linking_number(0, 1);
    const bool same_jones = jones == jones_by(link);
    const bool same_alexander =
        !homfly || drawn.loops != 1 || loopwise::knots::alexander(diagram) == alexander_by(link);
    if (same_jones && same_alexander) return;
    ++count.different;
    std::cout << name << ": " << (jones ? text(*jones) : "none") << " here, " << text(jones_by(link)) << " there\n";
}

Count say(const char* what, Count count) {
    std::cout << what << ": " << count.diagrams << " diagrams of up to " << count.most_crossings << " crossings, "
              << count.different << " different\n";
    return count;
}

Count braids() {
    Count count;
    for (const loopwise::knots::BraidRow& row : loopwise::knots::braid_rows)
        compare(std::to_string(row.crossings) + '_' + std::to_string(row.number),
                loopwise::knots::closed_braid(row.strands, row.word), true, count);
    return say("Jones and Alexander polynomials of the table's braids", count);
}

Count random_braids() {
    Count count;
    chains::Random random(71);
    while (count.diagrams < 2000) {
        const int strands = 3 + random.below(4);
        std::string word;
        for (int length = 8 + random.below(14); length > 0; --length)
            word += static_cast<char>((random.below(2) == 0 ? 'a' : 'A') + random.below(strands - 1));
        for (int k = 1; k < strands; ++k) word += static_cast<char>('a' + k - 1); // no strand by itself
        const Diagram diagram = loopwise::knots::closed_braid(strands, word);
        if (diagram.loops <= 2) compare("braid", diagram, true, count);
    }
    return say("Jones and Alexander polynomials of random braids of one or two loops", count);
}

Count polygons() {
    Count count;
    chains::Random random(72);
    while (count.diagrams < 500) {
        const Chain ring = chains::make(chains::Kind::tangle, 12 + random.below(20), random);
        const std::array<std::span<const ChainAtom>, 1> loops{ring};
        const loopwise::knots::View view = loopwise::knots::project_diagram(loops);
        if (view.diagram.size() >= 3 && view.diagram.size() <= 70) compare("polygon", view.diagram, false, count);
    }
    return say("Jones polynomials of random polygons", count);
}

} // namespace

int main() {
    int different = 0;
    for (const Count& count : {braids(), random_braids(), polygons()}) different += count.different;
    return different == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
