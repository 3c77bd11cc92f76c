#include "knots/simplify.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace loopwise::knots {
namespace {

/// Larger diagrams are not rerouted, and no diagram for more steps: naming takes less than a second.
constexpr int most_crossings_to_reroute = 3000;
constexpr long long most_steps = 15'000'000;

/// A part of a strand that is over at all its crossings, or under at all.
struct Pass {
    std::vector<Dart> edges;    ///< each by the end where it begins
    std::vector<int> crossings; ///< between the edges
};

/// The edges that a new pass crosses. It crosses each from the face to the left of this end.
using Route = std::vector<Dart>;

class Rerouting {
  public:
    explicit Rerouting(Diagram& diagram) : diagram_(diagram) {}
    /// Reroutes one pass so that it has fewer crossings. Returns false where no pass can have fewer.
    bool improve_once();
    bool wander(Draw& draw);

  private:
    Diagram& diagram_;
    Faces faces_;
    std::vector<int> on_pass_;     ///< by end: the last search for a pass that has its edge
    std::vector<int> reached_;     ///< by face: the last search that reached it
    std::vector<Dart> entered_by_; ///< by face: the end whose edge was crossed to it
    int search_ = 0;
    Dart turn_ = 0;       ///< the next end to start a pass from
    long long steps_ = 0; ///< ends visited so far

    void start_over();
    int left_of(Dart d) const { return faces_.left_of[static_cast<std::size_t>(d)]; }
    Pass pass_from(Dart out, bool under) const;
    std::optional<Route> short_route(const Pass& pass, std::size_t most, Draw* draw = nullptr);
    bool lay(Pass pass, Route route, bool under);
};

void Rerouting::start_over() {
    find_faces(diagram_, faces_);
    steps_ += static_cast<long long>(diagram_.mate.size());
    on_pass_.assign(diagram_.mate.size(), 0);
    reached_.assign(faces_.any_end.size(), 0);
    entered_by_.assign(faces_.any_end.size(), -1);
    search_ = 0;
}

/// The longest pass from this end that does not begin or end at one of its own crossings.
Pass Rerouting::pass_from(Dart out, bool under) const {
    Pass pass{{out}, {}};
    Dart to = diagram_.across(out);
    while (is_under(to) == under && crossing_of(to) != crossing_of(out)) {
        pass.crossings.push_back(crossing_of(to));
        pass.edges.push_back(opposite(to));
        to = diagram_.across(opposite(to));
    }
    const auto own = std::find(pass.crossings.begin(), pass.crossings.end(), crossing_of(to));
    if (own != pass.crossings.end()) {
        pass.edges.resize(static_cast<std::size_t>(own - pass.crossings.begin()) + 1);
        pass.crossings.erase(own, pass.crossings.end());
    }
    return pass;
}

/// A route with the fewest edges, at most so many, from a face along the pass's first edge to a face along its last.
/// Edges of the pass itself do not count: they will be removed. With random numbers, one of several such routes.
std::optional<Route> Rerouting::short_route(const Pass& pass, std::size_t most, Draw* draw) {
    ++search_;
    for (const Dart d : pass.edges)
        for (const Dart end : {d, diagram_.across(d)}) on_pass_[static_cast<std::size_t>(end)] = search_;
    const int start = left_of(pass.edges.front());
    // Both faces along the last edge are equally near. Which one is the goal matters among routes of one length.
    const Dart last = pass.edges.back();
    const int goal = left_of(draw != nullptr && (*draw)(2) == 0 ? diagram_.across(last) : last);
    std::vector<int> here{start}, farther;
    reached_[static_cast<std::size_t>(start)] = search_;
    entered_by_[static_cast<std::size_t>(start)] = -1;
    const auto reach = [&](Dart by, std::vector<int>& faces) {
        const int face = left_of(diagram_.across(by));
        if (reached_[static_cast<std::size_t>(face)] == search_) return;
        reached_[static_cast<std::size_t>(face)] = search_;
        entered_by_[static_cast<std::size_t>(face)] = by;
        faces.push_back(face);
    };
    const auto around = [&](int face, auto&& visit) {
        const Dart first = faces_.any_end[static_cast<std::size_t>(face)];
        Dart d = first;
        do {
            visit(d);
            d = turned(diagram_.across(d), 3);
            ++steps_;
        } while (d != first);
    };
    const auto free = [&](Dart d) { return on_pass_[static_cast<std::size_t>(d)] == search_; };
    for (std::size_t crossed = 0; crossed <= most && !here.empty(); ++crossed) {
        for (std::size_t i = 0; i < here.size(); ++i)
            around(here[i], [&](Dart d) {
                if (free(d)) reach(d, here);
            });
        if (reached_[static_cast<std::size_t>(goal)] == search_) {
            Route route;
            for (int face = goal; face != start;) {
                const Dart by = entered_by_[static_cast<std::size_t>(face)];
                if (!free(by)) route.push_back(by);
                face = left_of(by);
            }
            std::reverse(route.begin(), route.end());
            return route;
        }
        farther.clear();
        if (draw != nullptr)
            for (std::size_t i = here.size(); i > 1; --i) std::swap(here[i - 1], here[(*draw)(i)]);
        for (const int face : here)
            around(face, [&](Dart d) {
                if (!free(d)) reach(d, farther);
            });
        here.swap(farther);
    }
    return {};
}

bool Rerouting::lay(Pass pass, Route route, bool under) {
    // An edge that the old pass divides becomes one again: it begins where its first part does.
    for (Dart& d : route)
        for (std::size_t steps = 0;
             std::find(pass.crossings.begin(), pass.crossings.end(), crossing_of(d)) != pass.crossings.end();
             d = diagram_.across(opposite(d)))
            if (++steps > pass.crossings.size()) return false; // a loop that crosses only the pass
    for (const int crossing : pass.crossings) diagram_.dissolve(crossing);
    Dart from = pass.edges.front();
    const Dart to = diagram_.across(from);
    const int loop = diagram_.loop_of(from);
    for (const Dart start : route) {
        // With the edge pointing up, the pass comes from the left.
        const Dart end = diagram_.across(start);
        const bool upwards = diagram_.is_out(start);
        const int other = diagram_.loop_of(start);
        const int crossing = pass.crossings.back();
        pass.crossings.pop_back();
        const int left = under ? 0 : upwards ? 3 : 1;
        const Dart in = 4 * crossing + left;
        diagram_.crossings[static_cast<std::size_t>(crossing)] = {upwards != under ? 1 : -1, under ? loop : other,
                                                                  under ? other : loop};
        diagram_.link(from, in);
        diagram_.link(start, turned(in, 1));
        diagram_.link(end, turned(in, 3));
        from = opposite(in);
    }
    diagram_.link(from, to);
    return true;
}

/// Reroutes a random pass along a random route with as many crossings.
bool Rerouting::wander(Draw& draw) {
    start_over();
    const Dart out = static_cast<Dart>(draw(diagram_.mate.size()));
    const bool under = draw(2) == 0;
    if (!diagram_.is_out(out)) return false;
    const Pass pass = pass_from(out, under);
    if (pass.crossings.empty()) return false;
    const std::optional<Route> route = short_route(pass, pass.crossings.size(), &draw);
    return route && lay(pass, *route, under);
}

/// Starts where the last improvement was, and stops when no end starts a pass that can have fewer crossings.
bool Rerouting::improve_once() {
    start_over();
    const auto ends = static_cast<Dart>(diagram_.mate.size());
    for (Dart tried = 0; tried < ends && steps_ < most_steps; ++tried) {
        const Dart out = turn_++ % ends;
        if (!diagram_.is_out(out)) continue;
        for (const bool under : {false, true}) {
            const Pass pass = pass_from(out, under);
            if (pass.crossings.empty()) continue;
            const std::optional<Route> route = short_route(pass, pass.crossings.size() - 1);
            if (route && lay(pass, *route, under)) return true;
        }
    }
    return false;
}

/// Undoes Reidemeister's move I (a kink) or II (a strand over two crossings in a row with another) at a crossing.
bool undo_at(Diagram& diagram, int crossing) {
    for (Dart d = 4 * crossing; d < 4 * crossing + 4; ++d) {
        const Dart next = turned(d, 1), end = diagram.across(d);
        if (end == next) {
            diagram.dissolve(crossing);
            return true;
        }
        if (crossing_of(end) != crossing && diagram.across(next) == turned(end, 3) && is_under(d) == is_under(end)) {
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

bool reroute_at_random(Diagram& diagram, Draw& draw) {
    if (!Rerouting(diagram).wander(draw)) return false;
    diagram.renumber();
    return true;
}

} // namespace loopwise::knots
