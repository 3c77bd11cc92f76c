#include "survey/minimal_closure.hpp"

#include "src/model/identifiers.hpp"
#include "src/model/points.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <set>

namespace loopwise::survey {

using namespace model;
namespace {

/// Far outside, in diameters of the chain; and the largest angle between two points of the arc there.
constexpr double far_out = 2.0, arc_step = std::numbers::pi / 12;

struct Face {
    std::array<std::size_t, 3> corners;
    PointR3 normal; ///< a unit vector outwards
    double offset;  ///< of its plane along the normal

    double height(PointR3 place) const { return dot(normal, place) - offset; }
};

/// The convex hull of some places, one after the other: faces that see a new place give way to new ones from the rim of
/// what it sees. Places within a tolerance of a face count as inside.
class Hull {
  public:
    explicit Hull(const Chain& chain) {
        for (const ChainAtom& bead : chain) places_.push_back(position(bead));
        tolerance_ = 1e-9 * DiameterOfChain(chain);
        if (!begin()) return;
        for (std::size_t i = 0; i < places_.size(); ++i) add(i);
    }

    /// No face where all places are in a plane.
    const std::vector<Face>& faces() const { return faces_; }

  private:
    std::size_t farthest(const auto& distance) const {
        std::size_t best = 0;
        for (std::size_t i = 1; i < places_.size(); ++i)
            if (distance(places_[i]) > distance(places_[best])) best = i;
        return best;
    }

    bool begin() {
        const std::size_t a = 0;
        const PointR3 origin = places_[a];
        const std::size_t b = farthest([&](PointR3 p) { return length(p - origin); });
        const PointR3 along = places_[b] - origin;
        const std::size_t c = farthest([&](PointR3 p) { return length(cross(along, p - origin)); });
        const PointR3 normal = cross(along, places_[c] - origin);
        const std::size_t d = farthest([&](PointR3 p) { return std::abs(dot(normal, p - origin)); });
        if (!(std::abs(dot(normal, places_[d] - origin)) > tolerance_ * length(normal))) return false;
        inside_ = 0.25 * (origin + places_[b] + places_[c] + places_[d]);
        for (const auto& corners : {std::array{a, b, c}, {a, b, d}, {a, c, d}, {b, c, d}}) add_face(corners);
        return true;
    }

    /// The order of the corners is turned so that the normal points outwards.
    void add_face(std::array<std::size_t, 3> corners) {
        const PointR3 first = places_[corners[0]];
        const PointR3 across = cross(places_[corners[1]] - first, places_[corners[2]] - first);
        if (!(length(across) > 0)) return;
        PointR3 normal = (1 / length(across)) * across;
        if (dot(normal, inside_ - first) > 0) {
            normal = -1 * normal;
            std::swap(corners[1], corners[2]);
        }
        faces_.push_back({corners, normal, dot(normal, first)});
    }

    void add(std::size_t place) {
        std::set<std::pair<std::size_t, std::size_t>> seen;
        const auto sees = [&](const Face& face) { return face.height(places_[place]) > tolerance_; };
        for (const Face& face : faces_)
            if (sees(face))
                for (std::size_t i = 0; i < 3; ++i) seen.emplace(face.corners[i], face.corners[(i + 1) % 3]);
        if (seen.empty()) return;
        std::erase_if(faces_, sees);
        for (const auto& [from, to] : seen)
            if (!seen.contains({to, from})) add_face({from, to, place});
    }

    std::vector<PointR3> places_;
    std::vector<Face> faces_;
    PointR3 inside_{};
    double tolerance_ = 0;
};

} // namespace

std::array<WayOut, 2> ways_out(const Chain& chain) {
    const Hull hull(chain);
    std::array<WayOut, 2> ways;
    for (const std::size_t end : {std::size_t{0}, std::size_t{1}}) {
        const PointR3 place = position(end == 0 ? chain.front() : chain.back());
        ways[end] = {{0, 0, 1}, hull.faces().empty() ? 0 : INFINITY};
        for (const Face& face : hull.faces())
            if (-face.height(place) < ways[end].distance) ways[end] = {face.normal, std::max(0.0, -face.height(place))};
    }
    return ways;
}

closure::Closing close_minimally(Chain& chain) {
    if (chain.empty()) return closure::Closing::nothing_to_close;
    const PointR3 first = position(chain.front()), last = position(chain.back());
    const auto [from_first, from_last] = ways_out(chain);
    if (distance(first, last) <= from_first.distance + from_last.distance) return closure::Closing::closed;
    const PointR3 a = from_last.direction, b = from_first.direction;
    PointR3 aside = b - dot(a, b) * a;
    if (!(length(aside) > 1e-9)) aside = cross(a, std::abs(a.x) < 0.5 ? PointR3{1, 0, 0} : PointR3{0, 1, 0});
    aside = (1 / length(aside)) * aside;
    const double angle = std::acos(std::clamp(dot(a, b), -1.0, 1.0)), radius = far_out * DiameterOfChain(chain);
    // Both lines out end on the same sphere around the last bead, or beside it; between them the arc is far outside.
    std::int32_t id = chain.back().id;
    const auto append = [&](PointR3 p) { chain.push_back({p.x, p.y, p.z, id = model::id_after(id)}); };
    const int steps = std::max(1, static_cast<int>(std::ceil(angle / arc_step)));
    for (int i = 0; i < steps; ++i) {
        const double turn = angle * i / steps;
        append(last + (radius * std::cos(turn)) * a + (radius * std::sin(turn)) * aside);
    }
    append(first + radius * b);
    return closure::Closing::closed;
}

} // namespace loopwise::survey
