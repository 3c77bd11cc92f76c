#include "fingerprint/direction_classes.hpp"

#include "src/closure/point_tables.hpp"
#include "src/model/points.hpp"

#include <algorithm>
#include <cmath>

namespace loopwise::fingerprint {

using namespace model;
namespace {

double area(PointR3 v, PointR3 w) { return v.x * w.y - v.y * w.x; }

bool is_apart(double a0, double a1, double b0, double b1) {
    return std::max(a0, a1) + EPS < std::min(b0, b1) || std::max(b0, b1) + EPS < std::min(a0, a1);
}

struct Seen {
    Pass pass = Pass::apart;
    double at_a = 0, at_b = 0;
};

/// How bond a passes bond b. Bonds that come closer than the tolerance pass close.
Seen pass_of(const PointR3* a, const PointR3* b) {
    if (is_apart(a[0].x, a[1].x, b[0].x, b[1].x) || is_apart(a[0].y, a[1].y, b[0].y, b[1].y)) return {};
    const PointR3 along_a = a[1] - a[0], along_b = b[1] - b[0], between = b[0] - a[0];
    const double size_a = std::hypot(along_a.x, along_a.y), size_b = std::hypot(along_b.x, along_b.y),
                 turn = area(along_a, along_b);
    const bool is_crosswise = std::fabs(turn) > EPS * size_a * size_b; // false also for what is not a number
    if (b == a + 1)                                                    // the bead between them is where the path goes
        return is_crosswise || along_a.x * along_b.x + along_a.y * along_b.y > 0 ? Seen{} : Seen{Pass::close};
    if (!is_crosswise) return {Pass::close};
    // Where they cross, as parts of the bonds, and how far from an end an end comes close to the other bond.
    const double at_a = area(between, along_b) / turn, at_b = area(between, along_a) / turn,
                 margin_a = EPS * size_b / std::fabs(turn), margin_b = EPS * size_a / std::fabs(turn);
    const auto is_beyond = [](double at, double margin) { return at < -margin || at > 1 + margin; };
    const auto is_near_end = [](double at, double margin) { return at < margin || at > 1 - margin; };
    if (is_beyond(at_a, margin_a) || is_beyond(at_b, margin_b)) return {};
    if (is_near_end(at_a, margin_a) || is_near_end(at_b, margin_b)) return {Pass::close};
    const double above = a[0].z + at_a * along_a.z - b[0].z - at_b * along_b.z;
    return {std::fabs(above) <= EPS ? Pass::close : above > 0 ? Pass::over : Pass::under, at_a, at_b};
}

} // namespace

void DirectionClasses::find(int row) {
    look_along(row);
    find_crossings();
    find_changes();
    label();
    number();
}

void DirectionClasses::look_along(int row) {
    const PointR3 given = closure::uniform_directions[static_cast<std::size_t>(row)];
    const PointR3 z = (1 / length(given)) * given;
    const PointR3 other = std::fabs(z.x) < 0.5 ? PointR3{1, 0, 0} : PointR3{0, 1, 0};
    const PointR3 across = cross(z, other), x = (1 / length(across)) * across, y = cross(z, x);
    seen_.clear();
    for (const ChainAtom& bead : chain_) {
        const PointR3 at = position(bead) - position(chain_.front());
        seen_.push_back({dot(at, x), dot(at, y), dot(at, z)});
    }
}

void DirectionClasses::find_crossings() {
    const std::size_t bonds = seen_.size() - 1;
    for (Crossings* all : {&crossings_, &backwards_}) {
        all->resize(bonds);
        for (std::vector<Crossing>& of_bond : *all) of_bond.clear();
    }
    const auto add = [&](std::size_t a, std::size_t b, double at_a, double at_b, Pass pass) {
        crossings_[a].push_back({b, at_a, at_b, pass});
        backwards_[bonds - 1 - a].push_back({bonds - 1 - b, 1 - at_a, 1 - at_b, pass});
    };
    for (std::size_t a = 0; a < bonds; ++a)
        for (std::size_t b = a + 1; b < bonds; ++b)
            if (const auto [pass, at_a, at_b] = pass_of(&seen_[a], &seen_[b]); pass != Pass::apart) {
                add(a, b, at_a, at_b, pass);
                add(b, a, at_b, at_a, pass == Pass::over ? Pass::under : pass == Pass::under ? Pass::over : pass);
            }
}

/// An earlier bond passes over a bond. The number of beads that a subchain must leave out at its front so that the bond
/// changes no knot at its back: all up to the last bond that holds the kink between the two.
std::size_t DirectionClasses::left_out(const Crossings& crossings, std::size_t bond, const Crossing& over) {
    const std::size_t begin = over.other;
    if (over.pass == Pass::close) return begin + 1;
    std::size_t left_out = 0;
    for (std::size_t b = begin; b <= bond; ++b)
        for (const Crossing& c : crossings[b]) {
            const bool is_close = c.pass == Pass::close;
            if (!is_close && ((b == begin && c.at <= over.at_other) || (b == bond && c.at >= over.at))) continue;
            if (c.other > bond || (c.other == bond && !is_close && c.at_other >= over.at)) continue;
            const bool is_outside = c.other < begin || (c.other == begin && !is_close && c.at_other <= over.at_other);
            if (is_close && !is_outside) return begin + 1;
            if (is_outside && c.pass != Pass::under) left_out = std::max(left_out, c.other + 1);
        }
    return left_out;
}

/// For all earlier bonds that pass over a bond.
std::size_t DirectionClasses::left_out(const Crossings& crossings, std::size_t bond) {
    std::size_t most = 0;
    for (const Crossing& c : crossings[bond])
        if (c.other < bond && c.pass != Pass::over && c.other + 1 > most)
            most = std::max(most, left_out(crossings, bond, c));
    return most;
}

void DirectionClasses::find_changes() {
    const std::size_t bonds = seen_.size() - 1;
    first_kept_.clear();
    last_kept_.clear();
    for (std::size_t bond = 0; bond < bonds; ++bond) {
        first_kept_.push_back(left_out(crossings_, bond));
        last_kept_.push_back(bonds - left_out(backwards_, bonds - 1 - bond));
    }
}

std::uint32_t DirectionClasses::root_of(std::uint32_t c) {
    while (parent_[c] != c) c = parent_[c] = parent_[parent_[c]];
    return c;
}

void DirectionClasses::join(std::uint32_t a, std::uint32_t b) {
    a = root_of(a), b = root_of(b);
    if (a == b) return;
    if (a > b) std::swap(a, b);
    parent_[b] = a;
    if (shortest_[b].size() < shortest_[a].size()) shortest_[a] = shortest_[b];
}

void DirectionClasses::label() {
    const std::size_t beads = seen_.size();
    class_.resize(beads * (beads + 1) / 2);
    parent_.assign(1, unknotted);
    shortest_.assign(1, {0, 0});
    std::size_t at = 0;
    for (std::size_t last = 0; last < beads; ++last)
        for (std::size_t first = 0; first <= last; ++first, ++at) {
            std::uint32_t& own = class_[at];
            if (last - first + 1 < fewest_knotted) {
                own = unknotted;
                continue;
            }
            const bool as_without_last = first >= first_kept_[last - 1],
                       as_with_one_before = first > 0 && last <= last_kept_[first - 1];
            if (as_without_last)
                own = class_[at - last];
            else if (as_with_one_before)
                own = class_[at - 1];
            else {
                own = static_cast<std::uint32_t>(parent_.size());
                parent_.push_back(own);
                shortest_.push_back({first, last});
            }
            if (const Subchain s{first, last}; s.size() < shortest_[root_of(own)].size()) shortest_[root_of(own)] = s;
            if (as_without_last && as_with_one_before && class_[at - 1] != own) join(own, class_[at - 1]);
        }
}

/// Roots only, in the order of their first subchains.
void DirectionClasses::number() {
    std::vector<std::uint32_t> number(parent_.size());
    std::size_t count = 0;
    for (std::uint32_t c = 0; c < parent_.size(); ++c) {
        const std::uint32_t root = root_of(c);
        if (root == c) {
            shortest_[count] = shortest_[c];
            number[c] = static_cast<std::uint32_t>(count++);
        } else
            number[c] = number[root];
    }
    shortest_.resize(count);
    for (std::uint32_t& own : class_) own = number[own];
}

} // namespace loopwise::fingerprint
