// Clearing: proving for many segments at a time that contact() finds nothing between them and a
// triangle, from single-precision coordinates. What is not cleared is in doubt and goes to contact().
#pragma once

#include "reduce/intersection.hpp"

#include <bit>
#include <cstdint>
#include <span>

namespace loopwise {

/// Where the atoms are and how far they spread: every finite coordinate lies within `reach` of it.
struct Surroundings {
    PointR3 centre;
    double reach;
};

/// An affine function of a position relative to the centre, in single precision.
struct Affine {
    float x, y, z, constant;
};

/// What clears segments of one triangle. With T0, b = T1 - T0, c = T2 - T0 and n = b x c, a point S has
/// the height h = n(S - T0)/|n| and the coordinates p = (c x n)(S - T0)/|n|^2 along b and
/// q = (n x b)(S - T0)/|n|^2 along c. A segment from (h0, p0, q0) to (h1, p1, q1) meets the plane at
///
///     t = h0/(h0 - h1),   u = (p0 h1 - p1 h0)/(h1 - h0),   v = (q0 h1 - q1 h0)/(h1 - h0),
///
/// and no row of the table in contact() can hold when the determinant |n|(h0 - h1) is not zero and one
/// of t < 0, t > 1, u < 0, v < 0, u + v > 1 is true by more than twice the tolerance. `side`,
/// `parallel` and the three edge margins are what rounding may add to that; see clearance_of().
struct Clearance {
    Affine height, along_b, along_c;
    float side, parallel, edge_u, edge_v, edge_w;
};

Clearance clearance_of(const Triangle& triangle, const Surroundings& surroundings);

/// How far beyond 0 and 1 a cleared t, u, v or u + v lies: ten tolerances for contact()'s own
/// rounding, and a factor of two for that of the heights.
constexpr float beyond = 2.5e-4F;
static_assert(beyond > 20 * EPS);

/// Two heights have the same sign, and the smaller is more than `beyond` times their difference, where
/// the size of their sum is more than this times that of their difference.
constexpr float side_factor = 1 + 2 * beyond;

/// Positions relative to the centre, coordinate by coordinate. Segment j runs from position j to
/// position j + 1; bit j of `segments` says whether it exists.
struct Cloud {
    const float *x, *y, *z;
    const std::uint64_t* segments;
};

/// Segments per word of `segments`: what is cleared in one go.
constexpr std::size_t block_size = 64;

/// What may be read beyond the last position.
constexpr std::size_t cloud_padding = 16;

/// The first block at or after `block` and before `end` that holds segments in doubt, which `doubts`
/// then names; `end` when there is none.
using FindDoubts = std::size_t (*)(const Clearance& clearance, const Cloud& cloud, std::size_t block,
                                   std::size_t end, std::uint64_t& doubts);

/// The plain statement of FindDoubts, segment by segment. The second rounds products and the sums that
/// follow them once, as processors with fused multiply-add do.
std::size_t find_doubts_plain(const Clearance& clearance, const Cloud& cloud, std::size_t block,
                              std::size_t end, std::uint64_t& doubts);
std::size_t find_doubts_fused(const Clearance& clearance, const Cloud& cloud, std::size_t block,
                              std::size_t end, std::uint64_t& doubts);

struct InstructionSet {
    const char* name;
    FindDoubts find_doubts;
    FindDoubts statement; ///< what find_doubts equals to the last bit
};

/// The versions that this processor can run, the plain one first and the fastest last. They may differ in
/// what they leave in doubt, but not in what they may clear.
std::span<const InstructionSet> instruction_sets();

} // namespace loopwise
