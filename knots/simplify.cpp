#include "knots/simplify.hpp"

#include <algorithm>
#include <optional>

namespace loopwise::knots {
namespace {

/// Larger diagrams, and those that take more steps, are left as they are: nothing is named that takes seconds.
constexpr int most_crossings_to_reroute = 3000;
constexpr long long most_steps = 15'000'000;

/// The piece of a strand from one edge to another, over all crossings between them or under all.
struct Subchain {
    std::vector<Dart> edges;    ///< by the ends where they leave
    std::vector<int> crossings; ///< between them
};

/// Where a new stretch crosses edges: it comes from the face to the left of each of these ends.
using Route = std::vector<Dart>;

class Rerouting {
  public:
    explicit Rerouting(Diagram& diagram) : diagram_(diagram) {}
    /// Whether a stretch was laid anew.
    bool improve_once();

  private:
    Diagram& diagram_;
    std::vector<int> face_;        ///< to the left of an end, looking along its edge
    std::vector<Dart> any_end_;    ///< one end of every face
    std::vector<int> on_stretch_;  ///< of ends: the last search with a stretch that the edge is on
    std::vector<int> reached_;     ///< of faces: the last search that came there
    std::vector<Dart> entered_by_; ///< of faces: the end whose edge was crossed
    int search_ = 0;
    Dart turn_ = 0;       ///< whose turn it is to start a stretch
    long long steps_ = 0; ///< ends of edges looked at so far

    void find_faces();
    Subchain stretch_from(Dart out, bool under) const;
    std::optional<Route> shorter_route(const Subchain& subchain);
    bool lay(Subchain subchain, Route route, bool under);
};

/// Where an edge arrives, the next one around the face on its left leaves one place clockwise.
void Rerouting::find_faces() {
    face_.assign(diagram_.mate.size(), -1);
    any_end_.clear();
    for (Dart start = 0; start < static_cast<Dart>(diagram_.mate.size()); ++start) {
        if (face_[static_cast<std::size_t>(start)] >= 0) continue;
        for (Dart d = start; face_[static_cast<std::size_t>(d)] < 0; d = turned(diagram_.across(d), 3))
            face_[static_cast<std::size_t>(d)] = static_cast<int>(any_end_.size());
        any_end_.push_back(start);
    }
    steps_ += static_cast<long long>(diagram_.mate.size());
    on_stretch_.assign(diagram_.mate.size(), 0);
    reached_.assign(any_end_.size(), 0);
    entered_by_.assign(any_end_.size(), -1);
    search_ = 0;
}

/// As long as can be, but so that neither of its ends lies at a crossing of its own.
Subchain Rerouting::stretch_from(Dart out, bool under) const {
    Subchain subchain{{out}, {}};
    Dart to = diagram_.across(out);
    while (is_under(to) == under && crossing_of(to) != crossing_of(out)) {
        subchain.crossings.push_back(crossing_of(to));
        subchain.edges.push_back(opposite(to));
        to = diagram_.across(opposite(to));
    }
    const auto own = std::find(subchain.crossings.begin(), subchain.crossings.end(), crossing_of(to));
    if (own != subchain.crossings.end()) {
        subchain.edges.resize(static_cast<std::size_t>(own - subchain.crossings.begin()) + 1);
        subchain.crossings.erase(own, subchain.crossings.end());
    }
    return subchain;
}

/// The fewest edges to cross from a face along the first edge to a face along the last. Edges of the stretch itself do
/// not count, as they will be gone.
std::optional<Route> Rerouting::shorter_route(const Subchain& subchain) {
    ++search_;
    for (const Dart d : subchain.edges)
        for (const Dart end : {d, diagram_.across(d)}) on_stretch_[static_cast<std::size_t>(end)] = search_;
    const int start = face_[static_cast<std::size_t>(subchain.edges.front())];
    const int goal = face_[static_cast<std::size_t>(subchain.edges.back())];
    std::vector<int> here{start}, farther;
    reached_[static_cast<std::size_t>(start)] = search_;
    entered_by_[static_cast<std::size_t>(start)] = -1;
    const auto reach = [&](Dart by, std::vector<int>& faces) {
        const int face = face_[static_cast<std::size_t>(diagram_.across(by))];
        if (reached_[static_cast<std::size_t>(face)] == search_) return;
        reached_[static_cast<std::size_t>(face)] = search_;
        entered_by_[static_cast<std::size_t>(face)] = by;
        faces.push_back(face);
    };
    const auto around = [&](int face, auto&& visit) {
        const Dart first = any_end_[static_cast<std::size_t>(face)];
        Dart d = first;
        do {
            visit(d);
            d = turned(diagram_.across(d), 3);
            ++steps_;
        } while (d != first);
    };
    const auto free = [&](Dart d) { return on_stretch_[static_cast<std::size_t>(d)] == search_; };
    for (std::size_t crossed = 0; crossed < subchain.crossings.size() && !here.empty(); ++crossed) {
        for (std::size_t i = 0; i < here.size(); ++i)
            around(here[i], [&](Dart d) {
                if (free(d)) reach(d, here);
            });
        if (reached_[static_cast<std::size_t>(goal)] == search_) {
            Route route;
            for (int face = goal; face != start;) {
                const Dart by = entered_by_[static_cast<std::size_t>(face)];
                if (!free(by)) route.push_back(by);
                face = face_[static_cast<std::size_t>(by)];
            }
            std::reverse(route.begin(), route.end());
            return route;
        }
        farther.clear();
        for (const int face : here)
            around(face, [&](Dart d) {
                if (!free(d)) reach(d, farther);
            });
        here.swap(farther);
    }
    return {};
}

bool Rerouting::lay(Subchain subchain, Route route, bool under) {
    // An edge that the old stretch cuts in two becomes one again: it starts where its first part does.
    for (Dart& d : route)
        for (std::size_t steps = 0; std::find(subchain.crossings.begin(), subchain.crossings.end(),
                                              crossing_of(d)) != subchain.crossings.end();
             d = diagram_.across(opposite(d)))
            if (++steps > subchain.crossings.size()) return false; // a loop that crosses nothing else
    for (const int crossing : subchain.crossings) diagram_.dissolve(crossing);
    Dart from = subchain.edges.front();
    const Dart to = diagram_.across(from);
    const int loop = diagram_.loop_of(from);
    for (const Dart start : route) {
        // Seen with the edge going up, the stretch comes from the left.
        const Dart end = diagram_.across(start);
        const bool upwards = diagram_.is_out(start);
        const int other = diagram_.loop_of(start);
        const int crossing = subchain.crossings.back();
        subchain.crossings.pop_back();
        const int left = under ? 0 : upwards ? 3 : 1;
        const Dart in = 4 * crossing + left;
        diagram_.crossings[static_cast<std::size_t>(crossing)] = {upwards != under ? 1 : -1,
                                                                  under ? loop : other, under ? other : loop};
        diagram_.link(from, in);
        diagram_.link(start, turned(in, 1));
        diagram_.link(end, turned(in, 3));
        from = opposite(in);
    }
    diagram_.link(from, to);
    return true;
}

/// Goes on where the last improvement was, until every end has had its turn in vain.
bool Rerouting::improve_once() {
    find_faces();
    const auto ends = static_cast<Dart>(diagram_.mate.size());
    for (Dart tried = 0; tried < ends && steps_ < most_steps; ++tried) {
        const Dart out = turn_++ % ends;
        if (!diagram_.is_out(out)) continue;
        for (const bool under : {false, true}) {
            const Subchain subchain = stretch_from(out, under);
            if (subchain.crossings.empty()) continue;
            const std::optional<Route> route = shorter_route(subchain);
            if (route && lay(subchain, *route, under)) return true;
        }
    }
    return false;
}

/// Kinks, and two crossings in a row between the same two strands, one of which is above at both.
bool undo_at(Diagram& diagram, int crossing) {
    for (Dart d = 4 * crossing; d < 4 * crossing + 4; ++d) {
        const Dart next = turned(d, 1), end = diagram.across(d);
        if (end == next) {
            diagram.dissolve(crossing);
            return true;
        }
        if (crossing_of(end) != crossing && diagram.across(next) == turned(end, 3) &&
            is_under(d) == is_under(end)) {
            diagram.dissolve(crossing);
            diagram.dissolve(crossing_of(end));
            return true;
        }
    }
    return false;
}

} // namespace

bool undo_kinks_and_bigons(Diagram& diagram) {
    bool any = false;
    for (bool again = true; again;) {
        again = false;
        for (int crossing = 0; crossing < diagram.size(); ++crossing)
            if (!diagram.is_gone(crossing) && undo_at(diagram, crossing)) again = any = true;
    }
    if (any) diagram.renumber();
    return any;
}

void simplify(Diagram& diagram, int enough) {
    undo_kinks_and_bigons(diagram);
    if (diagram.size() > most_crossings_to_reroute) return;
    Rerouting rerouting(diagram);
    while (diagram.size() > enough && rerouting.improve_once()) {
        diagram.renumber();
        undo_kinks_and_bigons(diagram);
    }
}

} // namespace loopwise::knots
