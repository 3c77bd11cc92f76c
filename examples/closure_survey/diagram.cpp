#include "diagram.hpp"

#include <limits>

namespace {

std::vector<Edge> edges_of(const std::vector<Loop>& loops, int view) {
    std::vector<Edge> all;
    for (std::size_t i = 0; i < loops.size(); ++i)
        for (Edge& edge : ProjectChain(loops[i].atoms, view, true)) {
            edge.tag = static_cast<std::int32_t>(i);
            all.push_back(std::move(edge));
        }
    return all;
}

bool meet(const Edge& a, const Edge& b) {
    return TwoSegmentsCrossedSimple(a.start.x, a.start.y, a.end.x, a.end.y, b.start.x, b.start.y, b.end.x,
                                    b.end.y);
}

bool same_place(PointR3 a, PointR3 b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

bool are_neighbours(const Edge& a, const Edge& b) {
    return a.tag == b.tag && (same_place(a.end, b.start) || same_place(b.end, a.start));
}

PointR3 along(const Edge& edge) {
    return {edge.end.x - edge.start.x, edge.end.y - edge.start.y, edge.end.z - edge.start.z};
}

/// Marks the lower of two edges that cross.
void mark_crossing(Diagram& diagram, std::size_t i, std::size_t j) {
    Edge &a = diagram.edges[i], &b = diagram.edges[j];
    const PointR3 u = along(a), v = along(b);
    const double turn = u.x * v.y - u.y * v.x;
    if (turn == 0.0) return;
    const double dx = b.start.x - a.start.x, dy = b.start.y - a.start.y;
    const double on_a = (dx * v.y - dy * v.x) / turn, on_b = (dx * u.y - dy * u.x) / turn;
    ++diagram.crossings;
    if (a.start.z + on_a * u.z < b.start.z + on_b * v.z)
        a.annotations.push_back({on_a, static_cast<std::int64_t>(j)});
    else
        b.annotations.push_back({on_b, static_cast<std::int64_t>(i)});
}

} // namespace

Diagram diagram_of(const std::vector<Loop>& loops, int view) {
    Diagram diagram{edges_of(loops, view), 0};
    const std::vector<Edge>& edges = diagram.edges;
    for (std::size_t i = 0; i < edges.size(); ++i)
        for (std::size_t j = i + 1; j < edges.size(); ++j)
            if (meet(edges[i], edges[j]) && !are_neighbours(edges[i], edges[j])) mark_crossing(diagram, i, j);
    return diagram;
}

int clearest_view(const Specimen& specimen) {
    int clearest = 0;
    std::size_t fewest = std::numeric_limits<std::size_t>::max();
    for (int view = 0; view < views; ++view) {
        const std::size_t crossings =
            diagram_of(specimen.closed, view).crossings + diagram_of(specimen.reduced, view).crossings;
        if (crossings < fewest) {
            fewest = crossings;
            clearest = view;
        }
    }
    return clearest;
}
