// Any chains: every operation on coordinates against the literal one, or against what it promises.
#include "closure/point_tables.hpp"
#include "input.hpp"
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/eliminated.hpp"
#include "support/literal.hpp"

#include <cmath>

namespace {

double coordinate(Input& input, int style) {
    constexpr double odd[] = {INFINITY, -INFINITY, NAN,  1e308,  -1e308, 1e154,
                              1e77,     1e-5,      -0.0, 1e-160, 5e-324};
    switch (style) {
    case 0:
        return input.below(3);
    case 1:
        return input.take<std::int8_t>() / 8.0;
    case 2:
        return input.take<double>();
    case 3:
        return odd[static_cast<std::size_t>(input.below(std::size(odd)))];
    case 4:
        return 1 + input.take<std::int8_t>() * EPS / 4;
    case 5:
        return input.take<std::int16_t>() / 1000.0;
    default:
        return coordinate(input, input.below(6));
    }
}

Chain chain_of(Input& input) {
    const int style = input.below(7), first_id = input.below(8) == 0 ? 2147483600 : -3;
    Chain chain(static_cast<std::size_t>(input.below(90)));
    for (ChainAtom& a : chain) {
        a.x = coordinate(input, style), a.y = coordinate(input, style), a.z = coordinate(input, style);
        a.id = first_id + input.below(style == 0 ? 4 : 47);
    }
    return input.below(4) == 0 ? chains::with_repeated_end(chain) : chain;
}

PointR3 at(const ChainAtom& a) { return {a.x, a.y, a.z}; }
bool same(PointR3 a, PointR3 b) { return chains::same_bits({{a.x, a.y, a.z, 0}}, {{b.x, b.y, b.z, 0}}); }
bool equal(double a, double b) { return a == b || (a != a && b != b); }

/// A repeated end apart, what is left stood in the input in this order.
bool is_left_of(Chain left, Chain input) {
    if (literal::repeats_end(input) && input.size() > 1) left.pop_back(), input.pop_back();
    auto from = input.begin();
    for (const ChainAtom& a : left) {
        while (from != input.end() && !chains::same_bits({a}, {*from})) ++from;
        if (from++ == input.end()) return false;
    }
    return true;
}

void check_measures(Structure structure) {
    int largest = -1;
    for (Chain& chain : structure) {
        const PointR3 ours = CentreOfChain(chain), theirs = literal::centre(chain);
        REQUIRE(equal(ours.x, theirs.x) && equal(ours.y, theirs.y) && equal(ours.z, theirs.z));
        REQUIRE(RadiusOfChain(chain) == literal::radius(chain));
        REQUIRE(DiameterOfChain(chain) == literal::diameter({chain}));
        for (const ChainAtom& a : chain) largest = std::max(largest, a.id);
    }
    REQUIRE(DiameterOfStructure(structure) == literal::diameter(structure));
    REQUIRE(maxIdComps(structure) == largest);
}

void check_reduction(const Structure& input, bool closed) {
    Structure ours = input, theirs = input;
    REQUIRE(ChainsReduce(ours, closed) == literal::reduce(theirs, closed));
    Structure indexed = input;
    loopwise::reduce(indexed, closed, 0);
    REQUIRE(std::equal(indexed.begin(), indexed.end(), theirs.begin(), theirs.end(), chains::same_bits));
    bool same_loops = true;
    for (std::size_t i = 0; i < input.size(); ++i) {
        REQUIRE(chains::same_bits(ours[i], theirs[i]) && is_left_of(ours[i], input[i]));
        same_loops = same_loops && literal::repeats_end(ours[i]) == literal::repeats_end(input[i]);
    }
    // Repeated identifiers and not-a-numbers can make a repeated end of other atoms, or undo one.
    if (same_loops) {
        const int left = ChainsReduce(theirs, closed);
        std::size_t atoms = 0;
        for (const Chain& chain : ours) atoms += chain.size();
        REQUIRE(static_cast<std::size_t>(left) == atoms);
    }
    if (input.empty()) return;
    Chain one = input[0], expected = input[0];
    REQUIRE(ChainReduce(one, closed) == literal::reduce(expected, closed) &&
            chains::same_bits(one, expected));
    if (literal::repeats_end(input[0])) return;
    for (const loopwise::InstructionSet set : loopwise::available_instruction_sets()) {
        REQUIRE(chains::same_bits(eliminated(input[0], closed, set, 64), expected));
        REQUIRE(chains::same_bits(eliminated(input[0], closed, set, 128, true), expected));
    }
}

void check_closures(const Structure& input, int row, double scale) {
    const auto check = [&](auto one, auto many) {
        Structure all = input;
        many(all);
        for (std::size_t i = 0; i < input.size(); ++i) {
            Chain chain = input[i];
            const bool changed = one(chain) == 0 && !chain.empty();
            REQUIRE(chains::starts_with(chain, input[i]) && (chain.size() > input[i].size()) == changed);
            REQUIRE(chains::starts_with(all[i], input[i]));
        }
    };
    check([&](Chain& c) { return CloseChain_1point(c, scale); },
          [&](Structure& s) { CloseChains_1point(s, scale); });
    check([&](Chain& c) { return CloseChain_2points(c, scale); },
          [&](Structure& s) { CloseChains_2points(s, scale); });
    check([&](Chain& c) { return CloseChain_OUT(c, scale); },
          [&](Structure& s) { CloseChains_OUT(s, scale); });
    check([&](Chain& c) { return CloseChain_1direction_NoRandom(c, row); },
          [](Structure& s) { CloseChains_1direction(s); });
}

void check_projection(const Chain& chain, int row, bool closed) {
    const std::vector<Edge> edges = ProjectChain(chain, row, closed);
    const std::size_t n = chain.size();
    REQUIRE(edges.size() == (n < 2 ? 0 : n - !closed));
    const PointR3 direction = loopwise::fuleren[static_cast<std::size_t>(std::abs(row % 60))];
    for (std::size_t i = 0; i < edges.size(); ++i)
        REQUIRE(same(edges[i].start, ProjectPointF(at(chain[i]), direction)) &&
                same(edges[i].end, ProjectPointF(at(chain[(i + 1) % n]), direction)));
}

void check_points(const PointR3 (&p)[5], double radius, int id) {
    PointR3 points[5];
    std::copy(std::begin(p), std::end(p), points);
    REQUIRE(intersection(points, points + 3) == literal::intersection(p, p + 3));
    const Chain arc = GivePointsOnTheCircle(p[0], p[1], p[2], radius, id);
    REQUIRE(arc.size() <= 20);
    auto expected = static_cast<std::uint32_t>(id);
    for (const ChainAtom& a : arc) REQUIRE(static_cast<std::uint32_t>(a.id) == ++expected);
    REQUIRE(same(ProjectPointF(p[0], {0.9, -0.9, p[1].z}), p[0]));
    const auto [x, y, unused] = p[0];
    const bool numbers = x == x && y == y && p[1].x == p[1].x && p[1].y == p[1].y;
    REQUIRE(!numbers || on_segment(x, y, p[1].x, p[1].y, x, y));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FillFulerenData();
    std::srand(1);
    Input input({data, size});
    const Capture printed;
    const bool closed = input.below(2) == 1;
    const int row = input.below(256) * 2 - 50;
    const double scale = coordinate(input, 6);
    PointR3 points[5];
    for (PointR3& p : points) p = {coordinate(input, 6), coordinate(input, 6), coordinate(input, 6)};
    Structure structure(static_cast<std::size_t>(input.below(4)));
    for (Chain& chain : structure) chain = chain_of(input);

    check_points(points, scale, 2147483640 + input.below(8));
    check_measures(structure);
    check_reduction(structure, closed);
    check_closures(structure, row, scale);
    for (const Chain& chain : structure) check_projection(chain, row, closed);
    return 0;
}
