#include "src/model/diameter.hpp"

#include "src/model/points.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace loopwise::model {
namespace {

/// Number of positions that fit the stack.
class Block {
  public:
    bool full() const { return count_ == most; }
    void add(PointR3 p) {
        x_[count_] = p.x, y_[count_] = p.y, z_[count_] = p.z;
        ++count_;
    }
    /// The last position fills the lanes that are left over: it is in the set anyway.
    Positions positions() {
        while (count_ % distance_lanes != 0) add({x_[count_ - 1], y_[count_ - 1], z_[count_ - 1]});
        return {x_.data(), y_.data(), z_.data(), count_};
    }

  private:
    static constexpr std::size_t most = 128 * distance_lanes;
    std::array<double, most> x_, y_, z_; // not initialised
    std::size_t count_ = 0;
};

template <class Visit> void for_each(std::span<const Chain> components, Visit visit) {
    for (const Chain& component : components)
        for (const ChainAtom& atom : component) visit(position(atom));
}

/// The point farthest from another, and its squared distance.
struct Farthest {
    PointR3 point{};
    double squared = 0.0;
};

Farthest farthest_from(PointR3 from, std::span<const Chain> components) {
    Farthest result;
    for_each(components, [&](PointR3 p) {
        const double squared = squared_distance(p, from);
        if (squared > result.squared) result = {p, squared};
    });
    return result;
}

PointR3 mean(std::span<const Chain> components) {
    PointR3 sum{0, 0, 0};
    double count = 0;
    for_each(components, [&](PointR3 p) {
        sum = sum + p;
        ++count;
    });
    return {sum.x / count, sum.y / count, sum.z / count};
}

/// No two points are farther apart than the sum of their distances from a third. Those too close to the
/// centre to reach beyond what is known already cannot make the diameter larger. What is not a number or
/// not finite always may.
class Candidates {
  public:
    Candidates(PointR3 centre, double radius, double known)
        : centre_(centre), least_(std::sqrt(known) * (1 - rounding) - radius * (1 + rounding)) {
        if (!(least_ > 0) || known < least_normal) least_ = -1;
    }
    bool has(PointR3 p) const { return !(squared_distance(p, centre_) < least_ * least_ && least_ > 0); }

  private:
    static constexpr double rounding = 1e-12;      // a few thousand times that of a distance
    static constexpr double least_normal = 1e-280; // squares below it lose digits
    PointR3 centre_;
    double least_;
};

} // namespace

Diameter::Diameter(std::span<const Chain> components) {
    const PointR3 centre = mean(components);
    const Farthest one_end = farthest_from(centre, components);
    if (one_end.squared > 0) squared_ = farthest_from(one_end.point, components).squared;
    const FarthestSquare farther = farthest_square(chosen_instruction_set());
    const Candidates candidates(centre, std::sqrt(one_end.squared), squared_);

    // Compares every block of candidates with itself and all later blocks.
    std::size_t done = 0;
    for (bool more = true; more;) {
        Block block;
        std::size_t seen = 0, taken = 0;
        more = false;
        for_each(components, [&](PointR3 p) {
            if (!candidates.has(p) || seen++ < done) return;
            more = more || block.full();
            if (!block.full()) block.add(p), ++taken;
        });
        if (taken == 0) return;
        const Positions positions = block.positions();
        seen = 0;
        for_each(components, [&](PointR3 p) {
            if (candidates.has(p) && seen++ >= done) squared_ = farther(positions, p, squared_);
        });
        done += taken;
    }
}

double Diameter::value() const { return std::sqrt(squared_); }

void Diameter::include(PointR3 point, std::span<const Chain> components) {
    double largest = squared_;
    for_each(components, [&](PointR3 p) {
        const double squared = squared_distance(p, point);
        largest = squared > largest ? squared : largest;
    });
    squared_ = largest;
}

} // namespace loopwise::model
