#include "survey/reduce_before_closing.hpp"

#include "src/closure/closures.hpp"
#include "src/model/points.hpp"
#include "src/reduce/reduction.hpp"

#include <algorithm>

namespace loopwise::survey {

using namespace model;
namespace {

/// Shorter chains are reduced as fast after closing.
constexpr std::size_t fewest_beads = 16;

bool are_one_place(const ChainAtom& a, const ChainAtom& b) { return CompareEq(length(position(a) - position(b)), 0); }

/// The bounding box of a chain.
class Box {
  public:
    explicit Box(const ChainAtom& bead) : low_(position(bead)), high_(low_) {}
    void include(std::span<const ChainAtom> beads) {
        for (const ChainAtom& bead : beads) {
            low_ = {std::min(low_.x, bead.x), std::min(low_.y, bead.y), std::min(low_.z, bead.z)};
            high_ = {std::max(high_.x, bead.x), std::max(high_.y, bead.y), std::max(high_.z, bead.z)};
        }
    }
    /// The part of a path, from a point inside, after which it leaves the box; 1 or more where it stays inside.
    double part_inside(PointR3 from, PointR3 way) const {
        return std::min({part(from.x, way.x, low_.x, high_.x), part(from.y, way.y, low_.y, high_.y),
                         part(from.z, way.z, low_.z, high_.z)});
    }

  private:
    static double part(double from, double way, double low, double high) {
        return way > 0 ? (high - from) / way : way < 0 ? (low - from) / way : 1;
    }
    PointR3 low_, high_;
};

/// Ends a path a little outside the box. Farther out it meets no triangle between the beads, and the reduction would
/// test a long path against many triangles.
void shorten(const ChainAtom& from, ChainAtom& to, const Box& box) {
    constexpr double outside = 1.01, least_outside = 1;
    const PointR3 start = position(from), way = position(to) - start;
    const double part = outside * box.part_inside(start, way) + least_outside / length(way);
    if (part < 1) to = {from.x + part * way.x, from.y + part * way.y, from.z + part * way.z, to.id};
}

} // namespace

/// The paths are obstacles: components of two beads, which stay. They end outside the box, which holds the chain and
/// all triangles between its beads. The segment between the shifted ends is outside the box, or farther out in its
/// direction than the chain.
void reduce_before_closing(Chain& chain, std::span<const int> rows, double diameter) {
    // A chain or a path whose ends are one place would pass for a loop.
    if (chain.size() < fewest_beads || are_one_place(chain.front(), chain.back())) return;
    Structure all(1);
    all.reserve(1 + 2 * rows.size());
    const Chain ends{chain.front(), chain.back()};
    Box box(chain.front());
    box.include(chain);
    for (const int row : rows) {
        Chain path = ends;
        if (closure::close_in_direction(path, row, diameter) != closure::Closing::closed ||
            are_one_place(path[1], path[2]) || are_one_place(path[0], path[3]))
            return;
        shorten(path[1], path[2], box);
        shorten(path[0], path[3], box);
        all.push_back({path[1], path[2]});
        all.push_back({path[0], path[3]});
    }
    // An index pays where many paths are obstacles.
    constexpr std::size_t always_indexed = 0, few_rows = 10;
    all.front() = std::move(chain);
    reduce::reduce(all, false, rows.size() <= few_rows ? reduce::usual_fewest_indexed : always_indexed);
    chain = std::move(all.front());
}

void reduce_middle_before_closing(Chain& middle, std::span<const ChainAtom> before, std::span<const ChainAtom> behind,
                                  std::span<const ChainAtom> ends, int row, double diameter) {
    if (middle.size() < fewest_beads || are_one_place(middle.front(), middle.back())) return;
    Box box(middle.front());
    for (const std::span<const ChainAtom> part : {before, behind, std::span<const ChainAtom>(middle)})
        box.include(part);
    Structure all(1);
    for (const std::span<const ChainAtom> part : {before, behind})
        for (std::size_t i = 1; i < part.size(); ++i) all.push_back({part[i - 1], part[i]});
    for (const ChainAtom& end : ends) {
        Chain path{end};
        if (closure::close_in_direction(path, row, diameter) != closure::Closing::closed) return;
        path.pop_back();
        shorten(path[0], path[1], box);
        if (are_one_place(path[0], path[1])) return;
        all.push_back(std::move(path));
    }
    all.front() = std::move(middle);
    reduce::reduce(all, false);
    middle = std::move(all.front());
}

} // namespace loopwise::survey
