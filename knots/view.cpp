#include "knots/view.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <tuple>

namespace loopwise::knots {
namespace {

// Bounds of the rounding errors. The unit roundoff is u = 2^-53. Beads are moved so that one of them is the origin and
// scaled by a power of two so that no coordinate exceeds 1: one rounding of at most u each. The rows of a frame are the
// exact entries of a linear map with a positive determinant, which keeps the knot; they have length 1 up to a few u, so
// the sum of their absolute entries is at most 1.74.
//   projected coordinate        at most 1.74, wrong by at most 1.74 (u + 3u)              < 8 u
//   difference of two           at most 3.48, wrong by at most 2 * 8u + 3.48u              < 20 u
//   orientation, two products   at most 24.3, wrong by at most 4 * 3.48 * 20u + 49u         < 512 u
// An orientation has to be twice as far from 0, so that its reciprocal can be bounded too.
// Which of two strands is above does not depend on the frame: the determinant is that of the beads as given. Each of
// its entries is one difference, wrong by a factor of 1 + u at most; each of its six terms takes two products and three
// sums: together at most 9 u of the sum of their sizes, which is itself added up to within 8 u of it. Underflow takes
// away far less than the least volume.
constexpr double u = 0x1p-53;
constexpr double coordinate_error = 8 * u;
constexpr double orientation_error = 512 * u;
constexpr double surely_turned = 2 * orientation_error;
constexpr double depth_error = 16 * u;
constexpr double least_volume = 0x1p-1000;

/// The projection with the fewest crossings is taken, of this many proven ones among this many directions.
constexpr int projections_wanted = 6;
constexpr int directions = 48;
/// A diagram with at most this many crossings is the unknot: no other direction is tried.
constexpr std::size_t few_enough = 2;
/// With this many crossings other directions have too many, too.
constexpr std::size_t far_too_many = 3000;

struct Frame {
    std::array<double, 9> rows;
};

/// Rotations by random quaternions of whole numbers: beads on a lattice are not aligned with them.
constexpr std::array<Frame, directions> make_frames() {
    std::array<Frame, directions> frames{};
    std::uint64_t state = 20260113;
    const auto draw = [&state] {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<double>(state >> 53) - 1023.5;
    };
    for (Frame& frame : frames) {
        const double a = draw(), b = draw(), c = draw(), d = draw();
        const double s = 1 / (a * a + b * b + c * c + d * d);
        frame.rows = {(a * a + b * b - c * c - d * d) * s,
                      2 * (b * c - a * d) * s,
                      2 * (b * d + a * c) * s,
                      2 * (b * c + a * d) * s,
                      (a * a - b * b + c * c - d * d) * s,
                      2 * (c * d - a * b) * s,
                      2 * (b * d - a * c) * s,
                      2 * (c * d + a * b) * s,
                      (a * a - b * b - c * c + d * d) * s};
    }
    return frames;
}
constexpr std::array<Frame, directions> frames = make_frames();

struct Flat {
    double x, y;
};
Flat way(const PointR3& from, const PointR3& to) { return {to.x - from.x, to.y - from.y}; }
double cross(Flat a, Flat b) { return a.x * b.y - a.y * b.x; }
double dot(Flat a, Flat b) { return a.x * b.x + a.y * b.y; }

struct Segment {
    int from, to; ///< beads
    int next;     ///< the segment that starts where this one ends
    int loop;
};

/// One of the two ways through a crossing.
struct Passage {
    int segment;
    double at, error; ///< part of the segment before the crossing
    int crossing;
    bool over;
};

class Projector {
  public:
    PolygonFault take(std::span<const std::span<const ChainAtom>> loops);
    /// Whether every sign is proven; then the passages are in order along the loops.
    bool project_along(const Frame& frame, std::vector<Passage>& passages, std::vector<int>& signs);
    Diagram drawn(const std::vector<Passage>& passages, const std::vector<int>& signs) const;

  private:
    struct Box {
        double left, right, bottom, top;
        int segment;
    };
    enum class Meeting { none, crossing, unsure };

    std::vector<PointR3> given_; ///< as given, up to a power of two
    std::vector<PointR3> beads_; ///< relative to the first one, and scaled: no coordinate exceeds 1
    std::vector<PointR3> seen_;  ///< in the frame: x and y are projected, z is the depth
    double scale_[2] = {1, 1};   ///< one factor alone may be out of range
    std::vector<Segment> segments_;
    std::vector<Box> boxes_;
    int loops_ = 0;

    const PointR3& seen(int bead) const { return seen_[static_cast<std::size_t>(bead)]; }
    PointR3 way_between(int from, int to) const;
    int side_of_volume(int a, int b, int c, int d) const;
    void project(const Frame& frame);
    bool folds_back(const Segment& s) const;
    Meeting meet(int one, int other, std::vector<Passage>& passages, std::vector<int>& signs) const;
};

/// Moves and scales the beads. Apart from the one subtraction, scaling is exact.
PolygonFault Projector::take(std::span<const std::span<const ChainAtom>> loops) {
    double largest = 0;
    for (const auto loop : loops) {
        if (loop.size() < 3) return PolygonFault::few_beads;
        for (const ChainAtom& a : loop)
            for (const double x : {a.x, a.y, a.z}) {
                if (!std::isfinite(x)) return PolygonFault::not_finite;
                largest = std::max(largest, std::fabs(x));
            }
    }
    const double shrink = largest < 0x1p1022 ? 1 : 0.25; // so that no difference overflows
    for (const auto loop : loops) {
        const int start = static_cast<int>(given_.size()), count = static_cast<int>(loop.size());
        for (int i = 0; i < count; ++i) {
            const ChainAtom& a = loop[static_cast<std::size_t>(i)];
            given_.push_back({shrink * a.x, shrink * a.y, shrink * a.z});
            const int next = start + (i + 1) % count;
            segments_.push_back({start + i, next, next, loops_});
        }
        ++loops_;
    }
    const int count = static_cast<int>(given_.size());
    double reach = 0;
    for (int i = 0; i < count; ++i) {
        const PointR3 way = way_between(0, i);
        reach = std::max({reach, std::fabs(way.x), std::fabs(way.y), std::fabs(way.z)});
    }
    if (!(reach > 0)) return PolygonFault::repeated_beads;
    const int power = -std::ilogb(reach) - 1, half = power / 2;
    scale_[0] = std::scalbn(1, half);
    scale_[1] = std::scalbn(1, power - half);
    for (int i = 0; i < count; ++i) beads_.push_back(way_between(0, i));
    return PolygonFault::none;
}

void Projector::project(const Frame& frame) {
    const auto& r = frame.rows;
    seen_.resize(beads_.size());
    for (std::size_t i = 0; i < beads_.size(); ++i) {
        const PointR3& p = beads_[i];
        seen_[i] = {r[0] * p.x + r[1] * p.y + r[2] * p.z, r[3] * p.x + r[4] * p.y + r[5] * p.z,
                    r[6] * p.x + r[7] * p.y + r[8] * p.z};
    }
    boxes_.clear();
    for (std::size_t s = 0; s < segments_.size(); ++s) {
        const PointR3 &a = seen(segments_[s].from), &b = seen(segments_[s].to);
        const auto [left, right] = std::minmax(a.x, b.x);
        const auto [bottom, top] = std::minmax(a.y, b.y);
        boxes_.push_back({left, right + 2 * coordinate_error, bottom, top + 2 * coordinate_error, static_cast<int>(s)});
    }
    std::sort(boxes_.begin(), boxes_.end(), [](const Box& a, const Box& b) { return a.left < b.left; });
}

/// Whether the next segment may lie on this one: it is not proven to turn away or to go on.
bool Projector::folds_back(const Segment& s) const {
    const Flat here = way(seen(s.from), seen(s.to));
    const Flat next = way(seen(s.to), seen(segments_[static_cast<std::size_t>(s.next)].to));
    return !(std::fabs(cross(here, next)) > surely_turned || dot(here, next) > surely_turned);
}

PointR3 Projector::way_between(int from, int to) const {
    const PointR3 &a = given_[static_cast<std::size_t>(from)], &b = given_[static_cast<std::size_t>(to)];
    const auto scaled = [this](double x) { return x * scale_[0] * scale_[1]; };
    return {scaled(b.x - a.x), scaled(b.y - a.y), scaled(b.z - a.z)};
}

/// The sign of det(b - a, d - c, c - a); 0 where it is not proven.
int Projector::side_of_volume(int a, int b, int c, int d) const {
    const PointR3 v = way_between(a, b), w = way_between(c, d), r = way_between(a, c);
    const double terms[3][2] = {{r.x * (v.y * w.z), r.x * (v.z * w.y)},
                                {r.y * (v.z * w.x), r.y * (v.x * w.z)},
                                {r.z * (v.x * w.y), r.z * (v.y * w.x)}};
    double volume = 0, size = 0;
    for (const auto& [plus, minus] : terms) {
        volume += plus - minus;
        size += std::fabs(plus) + std::fabs(minus);
    }
    if (!(std::fabs(volume) > depth_error * size + least_volume)) return 0;
    return volume > 0 ? 1 : -1;
}

/// Meets two segments without a common bead, in projection and in depth.
///
/// With U = b - a, V = d - c, W = c - a and the projected crossing at a + sU = c + tV, sU - tV - W is (0, 0, h), h the
/// height of the first over the second. So det(U, V, W) = -h (U x V), and U x V has the sign of the side of ab that d
/// is on.
Projector::Meeting Projector::meet(int one, int other, std::vector<Passage>& passages, std::vector<int>& signs) const {
    const Segment &p = segments_[static_cast<std::size_t>(one)], &q = segments_[static_cast<std::size_t>(other)];
    const PointR3 &a = seen(p.from), &b = seen(p.to), &c = seen(q.from), &d = seen(q.to);
    const Flat ab = way(a, b), cd = way(c, d), ac = way(a, c);
    const double c_side = cross(ab, ac), d_side = cross(ab, way(a, d));
    const auto apart = [](double x, double y) {
        return (x > surely_turned && y > surely_turned) || (x < -surely_turned && y < -surely_turned);
    };
    if (apart(c_side, d_side)) return Meeting::none;
    const double a_side = cross(cd, way(c, a)), b_side = cross(cd, way(c, b));
    if (apart(a_side, b_side)) return Meeting::none;
    for (const double side : {a_side, b_side, c_side, d_side})
        if (!(std::fabs(side) > surely_turned)) return Meeting::unsure;

    const int volume = side_of_volume(p.from, p.to, q.from, q.to);
    if (volume == 0) return Meeting::unsure;
    const bool over = (volume > 0) != (d_side > 0);
    const int crossing = static_cast<int>(signs.size());
    signs.push_back(over == (d_side > 0) ? 1 : -1);
    // s = x / (x - y) with x and y of different signs, each wrong by at most e and larger than 2e: s is wrong by at
    // most 2e / |x - y| and its own rounding.
    const auto part = [](double x, double y) { return x / (x - y); };
    const auto error = [](double x, double y) { return 2 * orientation_error / std::fabs(x - y) + 4 * u; };
    passages.push_back({one, part(a_side, b_side), error(a_side, b_side), crossing, over});
    passages.push_back({other, part(c_side, d_side), error(c_side, d_side), crossing, !over});
    return Meeting::crossing;
}

bool Projector::project_along(const Frame& frame, std::vector<Passage>& passages, std::vector<int>& signs) {
    passages.clear();
    signs.clear();
    project(frame);
    for (const Segment& s : segments_) {
        const bool triangle =
            segments_[static_cast<std::size_t>(segments_[static_cast<std::size_t>(s.next)].next)].to == s.from;
        if (!triangle && folds_back(s)) return false;
    }
    for (auto i = boxes_.begin(); i != boxes_.end(); ++i) {
        const int next = segments_[static_cast<std::size_t>(i->segment)].next;
        for (auto j = i + 1; j != boxes_.end() && j->left <= i->right; ++j) {
            if (j->bottom > i->top || j->top < i->bottom) continue;
            if (j->segment == next || segments_[static_cast<std::size_t>(j->segment)].next == i->segment) continue;
            if (meet(i->segment, j->segment, passages, signs) == Meeting::unsure) return false;
        }
    }
    std::sort(passages.begin(), passages.end(),
              [](const Passage& a, const Passage& b) { return std::tie(a.segment, a.at) < std::tie(b.segment, b.at); });
    // Of three segments that meet in one point, two pass the third at one place.
    return std::adjacent_find(passages.begin(), passages.end(), [](const Passage& a, const Passage& b) {
               return a.segment == b.segment && b.at - a.at <= a.error + b.error;
           }) == passages.end();
}

Diagram Projector::drawn(const std::vector<Passage>& passages, const std::vector<int>& signs) const {
    Diagram diagram;
    diagram.loops = loops_;
    for (const int sign : signs) diagram.add({sign, 0, 0});
    const auto loop_of = [this](const Passage& p) { return segments_[static_cast<std::size_t>(p.segment)].loop; };
    const auto in = [&diagram](const Passage& p) { return p.over ? diagram.over_in(p.crossing) : 4 * p.crossing; };
    for (std::size_t start = 0, i = 0; i < passages.size(); ++i) {
        const Passage& p = passages[i];
        Crossing& crossing = diagram.crossings[static_cast<std::size_t>(p.crossing)];
        (p.over ? crossing.over : crossing.under) = loop_of(p);
        const bool last = i + 1 == passages.size() || loop_of(passages[i + 1]) != loop_of(p);
        diagram.link(opposite(in(p)), in(passages[last ? start : i + 1]));
        if (last) start = i + 1;
    }
    return diagram;
}

bool has_repeated_beads(std::span<const ChainAtom> loop) {
    std::vector<std::tuple<double, double, double>> places;
    for (const ChainAtom& a : loop) places.emplace_back(a.x, a.y, a.z);
    std::sort(places.begin(), places.end());
    return std::adjacent_find(places.begin(), places.end()) != places.end();
}

} // namespace

std::span<const ChainAtom> without_copy_of_first(std::span<const ChainAtom> loop) {
    if (loop.size() < 2) return loop;
    const ChainAtom &first = loop.front(), &last = loop.back();
    const double apart = std::hypot(last.x - first.x, last.y - first.y, last.z - first.z);
    const bool repeated = apart == 0 || (first.id == last.id && apart < EPS);
    return repeated ? loop.first(loop.size() - 1) : loop;
}

View project_diagram(std::span<const std::span<const ChainAtom>> loops) {
    Projector projector;
    View view;
    view.fault = projector.take(loops);
    if (view.fault != PolygonFault::none) return view;
    std::vector<Passage> passages, fewest_passages;
    std::vector<int> signs, fewest_signs;
    int projections = 0;
    for (const Frame& frame : frames) {
        if (!projector.project_along(frame, passages, signs)) continue;
        if (projections == 0 || signs.size() < fewest_signs.size()) {
            fewest_passages.swap(passages);
            fewest_signs.swap(signs);
        }
        ++projections;
        const std::size_t fewest = fewest_signs.size();
        if (projections == projections_wanted || fewest <= few_enough || fewest >= far_too_many) break;
    }
    const bool repeated = std::any_of(loops.begin(), loops.end(), has_repeated_beads);
    if (repeated)
        view.fault = PolygonFault::repeated_beads;
    else if (projections == 0)
        view.fault = PolygonFault::touching;
    else
        view.diagram = projector.drawn(fewest_passages, fewest_signs);
    return view;
}

} // namespace loopwise::knots
