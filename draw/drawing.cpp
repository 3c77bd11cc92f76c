#include "draw/drawing.hpp"

#include "src/projection/projection.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace loopwise::draw {
namespace {

/// A crossing or a tight place of the few sticks that are left spoils a picture more than a crossing of
/// the whole chain.
constexpr std::size_t core_weight = 10;
/// The part of the way out to the closing atoms that must lie in the picture plane.
constexpr double least_in_plane = 0.7;
/// A bead that is seen closer to a stick, as a part of the core's diameter, is hard to tell from it.
constexpr double least_apart = 0.08;
/// All views of more beads would take long, and none of them is clear.
constexpr std::size_t long_chain = 3000;
constexpr int few_views = 4;

std::size_t beads_of(const std::vector<survey::Loop>& loops) {
    std::size_t beads = 0;
    for (const survey::Loop& loop : loops) beads += loop.beads.size();
    return beads;
}

int step_of_views(std::size_t beads) { return beads > long_chain ? views / few_views : 1; }

/// Whether the chain has a gap between two of its own beads that follow each other in a loop.
bool has_gap(const survey::ComponentTally& chain, survey::LoopPosition one, survey::LoopPosition next) {
    const std::size_t from = index_of(one), to = index_of(next);
    return std::any_of(chain.bonds.gaps.begin(), chain.bonds.gaps.end(), [&](const polymer::OddBond& gap) {
        return from < to ? from <= gap.bead && gap.bead < to : from <= gap.bead || gap.bead < to;
    });
}

Bond bond_of(const survey::Loop& loop, std::size_t edge, const survey::ComponentTally& chain, Ends ends) {
    const std::size_t next = (edge + 1) % loop.beads.size();
    if (ends != Ends::bond && edge + 1 >= loop.own) return ends == Ends::closure ? Bond::closing : Bond::none;
    return has_gap(chain, loop.position(edge), loop.position(next)) ? Bond::gap : Bond::ordinary;
}

Drawing strands_of(const std::vector<survey::Loop>& loops, const survey::Result& result, int view, Ends ends) {
    Drawing drawing;
    for (std::size_t i = 0; i < loops.size(); ++i) {
        std::vector<Edge> edges = projection::project(loops[i].beads, view, true);
        for (std::size_t j = 0; j < edges.size(); ++j) {
            edges[j].tag = static_cast<std::int32_t>(i);
            drawing.edges.push_back(std::move(edges[j]));
            drawing.bonds.push_back(bond_of(loops[i], j, result.components[i], ends));
        }
    }
    return drawing;
}

bool meet(const Edge& a, const Edge& b) {
    return TwoSegmentsCrossedSimple(a.start.x, a.start.y, a.end.x, a.end.y, b.start.x, b.start.y, b.end.x, b.end.y);
}

bool same_place(PointR3 a, PointR3 b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

bool are_neighbours(const Edge& a, const Edge& b) {
    return a.tag == b.tag && (same_place(a.end, b.start) || same_place(b.end, a.start));
}

PointR3 along(const Edge& edge) {
    return {edge.end.x - edge.start.x, edge.end.y - edge.start.y, edge.end.z - edge.start.z};
}

/// Marks the lower of two edges that cross.
void mark_crossing(Drawing& drawing, std::size_t i, std::size_t j) {
    Edge &a = drawing.edges[i], &b = drawing.edges[j];
    const PointR3 u = along(a), v = along(b);
    const double turn = u.x * v.y - u.y * v.x;
    if (turn == 0.0) return;
    const double dx = b.start.x - a.start.x, dy = b.start.y - a.start.y;
    const double on_a = (dx * v.y - dy * v.x) / turn, on_b = (dx * u.y - dy * u.x) / turn;
    ++drawing.crossings;
    if (a.start.z + on_a * u.z < b.start.z + on_b * v.z)
        a.annotations.push_back({on_a, static_cast<std::int64_t>(j)});
    else
        b.annotations.push_back({on_b, static_cast<std::int64_t>(i)});
}

/// The distance in the picture plane of an edge's start from another edge.
double start_to_edge(const Edge& a, const Edge& b) {
    const PointR3 v = along(b);
    const double dx = a.start.x - b.start.x, dy = a.start.y - b.start.y;
    const double square = v.x * v.x + v.y * v.y;
    const double part = square > 0.0 ? std::clamp((dx * v.x + dy * v.y) / square, 0.0, 1.0) : 0.0;
    return std::hypot(dx - part * v.x, dy - part * v.y);
}

/// How many beads of a reduced loop are seen too close to a stick that does not end there.
std::size_t tight_places(const Drawing& core, double apart) {
    std::size_t count = 0;
    for (const Edge& a : core.edges)
        for (const Edge& b : core.edges) {
            const bool ends_there = same_place(a.start, b.start) || same_place(a.start, b.end);
            if (!ends_there && start_to_edge(a, b) < apart) ++count;
        }
    return count;
}

/// The diameter of what the reduction kept of the chain itself.
double core_diameter(const survey::ClosureResult& made) {
    Chain own;
    for (const survey::Loop& loop : made.reduced)
        own.insert(own.end(), loop.beads.begin(), loop.beads.begin() + static_cast<std::ptrdiff_t>(loop.own));
    return DiameterOfChain(own);
}

/// Whether the atoms that close the first loop are seen to be far away, not in front of the chain.
bool from_the_side(const Drawing& drawing, const std::vector<survey::Loop>& loops) {
    const std::size_t own = loops.front().own, atoms = loops.front().beads.size();
    if (own == 0 || own == atoms || drawing.edges.size() < atoms) return true;
    const PointR3 &last = drawing.edges[own - 1].start, &next = drawing.edges[own].start;
    return std::hypot(next.x - last.x, next.y - last.y) >= least_in_plane * Dist(last, next);
}

} // namespace

Drawing drawing_of(const std::vector<survey::Loop>& loops, const survey::Result& result, int view) {
    return drawing_of(loops, result, view, result.plan.method->closes ? Ends::closure : Ends::bond);
}

Drawing drawing_of(const std::vector<survey::Loop>& loops, const survey::Result& result, int view, Ends ends) {
    Drawing drawing = strands_of(loops, result, view, ends);
    const std::vector<Edge>& edges = drawing.edges;
    const auto left = [&](std::size_t i) { return std::min(edges[i].start.x, edges[i].end.x); };
    const auto right = [&](std::size_t i) { return std::max(edges[i].start.x, edges[i].end.x); };
    std::vector<std::size_t> order(edges.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t i, std::size_t j) { return left(i) < left(j); });
    for (std::size_t a = 0; a < order.size(); ++a)
        for (std::size_t b = a + 1; b < order.size() && left(order[b]) <= right(order[a]); ++b) {
            const auto [i, j] = std::minmax(order[a], order[b]);
            if (drawing.bonds[i] == Bond::none || drawing.bonds[j] == Bond::none) continue;
            if (meet(edges[i], edges[j]) && !are_neighbours(edges[i], edges[j])) mark_crossing(drawing, i, j);
        }
    return drawing;
}

int clearest_view(const survey::ClosureResult& made, const survey::Result& result) {
    const std::size_t left = beads_of(made.reduced);
    const int step = step_of_views(beads_of(made.closed));
    const double apart = least_apart * core_diameter(made);
    int clearest = 0;
    auto best = std::pair{false, std::numeric_limits<std::size_t>::max()};
    for (int view = 0; view < views; view += step) {
        const Drawing closed = drawing_of(made.closed, result, view);
        const Drawing core = drawing_of(made.reduced, result, view);
        const std::size_t tight = left > long_chain ? 0 : tight_places(core, apart);
        const std::size_t clutter = closed.crossings + core_weight * (core.crossings + tight);
        const auto rank = std::pair{!from_the_side(closed, made.closed), clutter};
        if (view > 0 && rank >= best) continue;
        best = rank;
        clearest = view;
    }
    return clearest;
}

int clearest_view(const std::vector<survey::Loop>& chains, const survey::Result& result, Ends ends) {
    int clearest = 0;
    std::size_t fewest = std::numeric_limits<std::size_t>::max();
    for (int view = 0; view < views; view += step_of_views(beads_of(chains))) {
        const std::size_t crossings = drawing_of(chains, result, view, ends).crossings;
        if (crossings >= fewest) continue;
        fewest = crossings;
        clearest = view;
    }
    return clearest;
}

} // namespace loopwise::draw
