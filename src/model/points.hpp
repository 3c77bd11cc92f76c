// Points, vectors and distances.
#pragma once

#include "libloopwise.h"

#include <cmath>

namespace loopwise::model {

inline PointR3 position(const ChainAtom& atom) { return {atom.x, atom.y, atom.z}; }

inline PointR3 operator+(PointR3 a, PointR3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline PointR3 operator-(PointR3 a, PointR3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }

inline PointR3 cross(PointR3 a, PointR3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline PointR3 operator*(double factor, PointR3 v) { return {factor * v.x, factor * v.y, factor * v.z}; }

inline double dot(PointR3 a, PointR3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// The square of distance(): the sum whose order of additions is part of every result.
inline double squared_distance(PointR3 a, PointR3 b) {
    const PointR3 d = a - b;
    return d.x * d.x + d.y * d.y + d.z * d.z;
}

inline double distance(PointR3 a, PointR3 b) { return std::sqrt(squared_distance(a, b)); }

inline double length(PointR3 v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

} // namespace loopwise::model
