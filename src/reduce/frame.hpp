// The frame in which the filter works: coordinates between -1 and 1.
#pragma once

#include "src/model/points.hpp"

#include <algorithm>
#include <limits>
#include <span>

namespace loopwise::reduce {

using model::operator-;

/// Coordinates relative to a centre, times a power of two, so that scaling is exact.
struct Frame {
    PointR3 centre;
    /// 0, which turns the filter off, where products of coordinates could overflow or underflow in contact().
    double scale;

    PointR3 operator()(PointR3 p) const {
        const PointR3 d = p - centre;
        return {d.x * scale, d.y * scale, d.z * scale};
    }
};

/// The smallest box around atoms. Coordinates that are not a number do not count.
class Extent {
  public:
    void widen(std::span<const ChainAtom> atoms);
    /// The frame in which the box lies between -1 and 1.
    Frame frame() const;

  private:
    struct Range {
        double least = std::numeric_limits<double>::infinity(), most = -least;
        void widen(double value) {
            least = value < least ? value : least;
            most = value > most ? value : most;
        }
        double middle() const { return least <= most ? least / 2 + most / 2 : 0; }
        double reach() const { return std::max(most - middle(), middle() - least); }
    };
    Range x_, y_, z_;
};

} // namespace loopwise::reduce
