#include "knots/factors.hpp"

#include "knots/simplify.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <tuple>
#include <utility>

namespace loopwise::knots {
namespace {

/// The edges of a loop that border the same two faces follow one another around the loop. What lies between two
/// neighbours becomes a loop of its own. Returns whether there were any.
bool cut(Diagram& diagram) {
    Faces faces;
    find_faces(diagram, faces);
    const auto left_of = [&faces](Dart d) { return faces.left_of[static_cast<std::size_t>(d)]; };
    struct Edge {
        std::tuple<int, int, int> borders; ///< its loop, the faces on its left and on its right
        int position;                      ///< on the way around its loop
        Dart from, to;
        auto key() const { return std::tie(borders, position); }
    };
    std::vector<Edge> edges;
    std::vector<bool> seen(diagram.mate.size(), false);
    for (Dart start = 0; start < static_cast<Dart>(seen.size()); ++start) {
        if (!diagram.is_out(start)) continue;
        for (Dart d = start; !seen[static_cast<std::size_t>(d)]; d = opposite(diagram.across(d))) {
            seen[static_cast<std::size_t>(d)] = true;
            const Dart to = diagram.across(d);
            edges.push_back({{diagram.loop_of(d), left_of(d), left_of(to)}, static_cast<int>(edges.size()), d, to});
        }
    }
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.key() < b.key(); });
    bool any = false;
    for (auto first = edges.begin(); first != edges.end();) {
        auto next = first + 1;
        for (; next != edges.end() && next->borders == first->borders; ++next, any = true)
            diagram.link((next - 1)->to, next->from);
        diagram.link((next - 1)->to, first->from);
        first = next;
    }
    return any;
}

/// The pieces of a diagram that share no crossing.
std::vector<Factor> pieces_of(const Factor& whole) {
    const Diagram& diagram = whole.diagram;
    std::vector<Factor> pieces;
    std::vector<int> number(diagram.crossings.size(), -1);
    for (int start = 0; start < diagram.size(); ++start) {
        if (number[static_cast<std::size_t>(start)] >= 0) continue;
        std::vector<int> members{start};
        number[static_cast<std::size_t>(start)] = 0;
        for (std::size_t i = 0; i < members.size(); ++i)
            for (int place = 0; place < 4; ++place) {
                const int next = crossing_of(diagram.across(4 * members[i] + place));
                if (number[static_cast<std::size_t>(next)] >= 0) continue;
                number[static_cast<std::size_t>(next)] = static_cast<int>(members.size());
                members.push_back(next);
            }
        Factor piece;
        std::vector<int> loop_number(whole.loops.size(), -1);
        const auto loop = [&](int of_whole) {
            int& n = loop_number[static_cast<std::size_t>(of_whole)];
            if (n < 0) {
                n = static_cast<int>(piece.loops.size());
                piece.loops.push_back(whole.loops[static_cast<std::size_t>(of_whole)]);
            }
            return n;
        };
        for (const int c : members) {
            const Crossing& crossing = diagram.crossings[static_cast<std::size_t>(c)];
            const int under = loop(crossing.under), over = loop(crossing.over);
            const int here = piece.diagram.add({crossing.sign, under, over});
            for (int place = 0; place < 4; ++place) {
                const Dart end = diagram.across(4 * c + place);
                piece.diagram.mate[static_cast<std::size_t>(4 * here + place)] =
                    4 * number[static_cast<std::size_t>(crossing_of(end))] + place_of(end);
            }
        }
        piece.diagram.loops = static_cast<int>(piece.loops.size());
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

/// An attempt takes time with the square of the crossings, and large diagrams seldom come down to one that can be
/// named.
constexpr std::int64_t most_work = 1'600'000;

/// Looks for fewer crossings and for a cut. Returns whether a cut was made.
bool shake(Diagram& diagram, int enough, int attempts) {
    Diagram moved = diagram;
    Draw draw;
    const std::int64_t crossings = diagram.size(), affordable = most_work / (crossings * crossings);
    for (int i = 0;
         i < std::min<std::int64_t>(attempts, affordable) && diagram.size() > enough && !is_alternating(moved); ++i) {
        if (!reroute_at_random(moved, draw)) continue;
        simplify(moved, enough);
        const bool any = cut(moved);
        if (any || moved.size() < diagram.size()) diagram = moved;
        if (any) return true;
    }
    return false;
}

} // namespace

bool is_alternating(const Diagram& diagram) {
    for (Dart d = 0; d < static_cast<Dart>(diagram.mate.size()); ++d)
        if (is_under(d) == is_under(diagram.across(d))) return false;
    return true;
}

std::vector<Factor> factors_of(Diagram diagram, int enough, int attempts) {
    std::vector<int> loops(static_cast<std::size_t>(diagram.loops));
    std::iota(loops.begin(), loops.end(), 0);
    std::vector<Factor> waiting, result;
    waiting.push_back({std::move(diagram), std::move(loops)});
    while (!waiting.empty()) {
        Factor factor = std::move(waiting.back());
        waiting.pop_back();
        simplify(factor.diagram, enough);
        if (factor.diagram.size() == 0) continue;
        const bool knot = factor.loops.size() == 1;
        const bool any =
            (factor.diagram.size() >= (knot ? fewest_in_sum : fewest_in_linked_sum) && cut(factor.diagram)) ||
            shake(factor.diagram, enough, attempts);
        std::vector<Factor> pieces;
        if (any || !knot) pieces = pieces_of(factor);
        if (any || pieces.size() > 1)
            std::move(pieces.begin(), pieces.end(), std::back_inserter(waiting));
        else
            result.push_back(std::move(knot ? factor : pieces.front()));
    }
    return result;
}

} // namespace loopwise::knots
