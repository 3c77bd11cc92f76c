#include "disguises.hpp"

#include "src/model/points.hpp"

#include <algorithm>
#include <array>
#include <cmath>

namespace disguises {

using namespace loopwise::model;
namespace {

using Points = std::vector<PointR3>;

Points points_of(const Chain& chain) {
    Points points;
    for (const ChainAtom& a : chain) points.push_back({a.x, a.y, a.z});
    return points;
}

Chain chain_of(const Points& points) {
    Chain chain;
    for (const PointR3& p : points) chain.push_back({p.x, p.y, p.z, static_cast<int>(chain.size()) + 1});
    return chain;
}

/// About an axis through the origin of length 1.
PointR3 rotated(PointR3 p, PointR3 axis, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return c * p + s * cross(axis, p) + ((1 - c) * dot(axis, p)) * axis;
}

/// Signs of volumes that are nearer to 0 count as unsure, and what is unsure as a hit.
constexpr double sure = 1e-9;

int side(PointR3 a, PointR3 b, PointR3 c, PointR3 d) {
    const double volume = dot(cross(b - a, c - a), d - a);
    return volume > sure ? 1 : volume < -sure ? -1 : 0;
}

bool may_hit(PointR3 p, PointR3 q, PointR3 a, PointR3 b, PointR3 c) {
    const int from = side(a, b, c, p), to = side(a, b, c, q);
    if (from == to && from != 0) return false;
    const int ab = side(p, q, a, b), bc = side(p, q, b, c), ca = side(p, q, c, a);
    const bool plus = ab > 0 || bc > 0 || ca > 0, minus = ab < 0 || bc < 0 || ca < 0;
    return !(plus && minus);
}

/// Moves a bead in a straight line, if that changes no crossing.
bool moved(Points& points, std::size_t i, PointR3 to) {
    const std::size_t n = points.size(), before = (i + n - 1) % n, after = (i + 1) % n;
    const PointR3 p = points[i], a = points[before], b = points[after];
    // A triangle without area would hide what its edge runs through.
    if (length(cross(p - a, to - a)) < sure || length(cross(p - b, to - b)) < sure) return false;
    for (std::size_t k = 0; k < n; ++k) {
        const std::size_t next = (k + 1) % n;
        if (k == before || k == i) continue;
        // An edge that ends at a corner of a triangle meets it nowhere else unless both lie in one plane.
        const bool at_a = next == before, at_b = k == after;
        const PointR3 q = points[k], r = points[next];
        if (at_a ? side(a, p, to, q) == 0 : may_hit(q, r, a, p, to)) return false;
        if (at_b ? side(b, p, to, r) == 0 : may_hit(q, r, b, p, to)) return false;
    }
    points[i] = to;
    return true;
}

/// Turns the beads between two others about the line through these, bead by bead, or does nothing.
void crankshaft(Points& points, chains::Random& random) {
    const std::size_t n = points.size();
    const auto first = static_cast<std::size_t>(random.below(static_cast<int>(n)));
    const auto count = static_cast<std::size_t>(1 + random.below(static_cast<int>(std::min<std::size_t>(n / 3, 12))));
    const PointR3 foot = points[first], way = points[(first + count + 1) % n] - foot;
    if (length(way) < sure) return;
    const double angle = random.between(-1, 1) * random.between(0, 3.1);
    const Points old = points;
    for (std::size_t k = 1; k <= count; ++k) {
        const std::size_t i = (first + k) % n;
        if (moved(points, i, foot + rotated(points[i] - foot, (1 / length(way)) * way, angle))) continue;
        points = old;
        return;
    }
}

void cut_an_edge(Points& points, chains::Random& random) {
    const auto i = static_cast<std::size_t>(random.below(static_cast<int>(points.size())));
    const PointR3 a = points[i], b = points[(i + 1) % points.size()];
    points.insert(points.begin() + static_cast<std::ptrdiff_t>(i) + 1, a + random.between(0.2, 0.8) * (b - a));
}

} // namespace

Chain braid_polygon(int strands, std::string_view word) {
    const std::size_t count = word.size();
    const auto places = static_cast<std::size_t>(strands);
    // Around the axis in so many steps that strands keep their order between two of them.
    constexpr std::size_t most_steps_around = 24;
    const std::size_t rest = std::max<std::size_t>(2, most_steps_around / count), steps = rest * count;
    std::vector<Points> along(places); // by the place where they start
    std::vector<std::size_t> owner(places);
    for (std::size_t k = 0; k < places; ++k) owner[k] = k;
    const auto point = [&](double radius, double step, double height) {
        const double angle = 2 * M_PI * step / static_cast<double>(steps);
        return PointR3{radius * std::cos(angle), radius * std::sin(angle), height};
    };
    for (std::size_t letter = 0; letter < count; ++letter) {
        const bool positive = word[letter] >= 'a';
        const auto left = static_cast<std::size_t>(word[letter] - (positive ? 'a' : 'A'));
        for (std::size_t k = 0; k < places; ++k) {
            const double radius = static_cast<double>(2 + k), step = static_cast<double>(letter * rest);
            along[owner[k]].push_back(point(radius, step, 0));
            if (k == left || k == left + 1) {
                const bool over = (k == left) == positive;
                const double middle = static_cast<double>(2 + left) + 0.5;
                along[owner[k]].push_back(point(middle, step + 0.5, over ? 0.4 : -0.4));
            } else
                along[owner[k]].push_back(point(radius, step + 0.5, 0));
            const double beyond = k == left ? radius + 1 : k == left + 1 ? radius - 1 : radius;
            for (std::size_t s = 1; s < rest; ++s)
                along[owner[k]].push_back(point(beyond, step + static_cast<double>(s), 0));
        }
        std::swap(owner[left], owner[left + 1]);
    }
    Points points;
    std::size_t strand = 0;
    do {
        points.insert(points.end(), along[strand].begin(), along[strand].end());
        strand = static_cast<std::size_t>(std::find(owner.begin(), owner.end(), strand) - owner.begin());
    } while (strand != 0);
    return chain_of(points);
}

Chain disguised(Chain polygon, std::size_t beads, chains::Random& random) {
    Points points = points_of(polygon);
    while (points.size() < beads) cut_an_edge(points, random);
    for (std::size_t turn = 0; turn < 6 * points.size(); ++turn) {
        const auto i = static_cast<std::size_t>(random.below(static_cast<int>(points.size())));
        if (turn % 2 == 0)
            crankshaft(points, random);
        else
            moved(points, i, points[i] + random.between(0, 2) * random.direction());
    }
    const PointR3 axis = random.direction();
    const double angle = random.between(0, 6.28);
    for (PointR3& p : points) p = rotated(p, axis, angle);
    return chain_of(points);
}

Chain random_polygon(int edges, chains::Random& random) {
    Points ways;
    for (int i = 0; i < edges / 2; ++i) {
        ways.push_back(random.direction());
        ways.push_back(-1 * ways.back());
    }
    const auto draw = [&] { return static_cast<std::size_t>(random.below(edges)); };
    for (std::size_t i = 0; i < ways.size(); ++i) std::swap(ways[i], ways[draw()]);
    for (int turn = 0; turn < 10 * edges; ++turn) {
        PointR3 &a = ways[draw()], &b = ways[draw()];
        const PointR3 both = a + b;
        const double angle = random.between(0, 2 * M_PI), size = length(both);
        if (&a == &b || size < sure) continue;
        a = rotated(a, (1 / size) * both, angle);
        b = both - a;
    }
    Points points{{0, 0, 0}};
    for (std::size_t i = 0; i + 1 < ways.size(); ++i) points.push_back(points.back() + ways[i]);
    return chain_of(points);
}

} // namespace disguises
