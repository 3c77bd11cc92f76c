// The table of prime knots.
#pragma once

#include "knots/colourings.hpp"
#include "knots/knot_type.hpp"

#include <cstdint>
#include <span>

namespace loopwise::knots {

/// Every knot that can be drawn with so few crossings is in the table or a sum of knots in it.
constexpr int table_crossings = 10;
/// The rows of the table are those of braid_rows, in Rolfsen's order.
std::size_t row_of(const PrimeKnot& knot);

/// Values of both polynomials at one place modulo a prime. The values of a sum are the products of its factors'.
struct PolynomialHash {
    std::uint64_t jones, alexander;
    bool operator==(const PolynomialHash&) const = default;
};
PolynomialHash polynomial_hash(const Laurent& jones, const Laurent& alexander);

struct TableKnot {
    PrimeKnot knot;
    Laurent jones, alexander;
    int signature;
    PolynomialHash hash, inverse;
};

/// Both hands of the knot in a row, the right-handed one first; one entry for a knot that is its own mirror image. What
/// the table holds is computed from the braid words when it is asked for, and kept for all threads.
///
/// A knot is right-handed where the lowest and the highest exponent of its Jones polynomial add up to more than 0;
/// where they add up to 0, if the coefficient at the higher exponent is the larger one in size in the first pair from
/// both ends that differs; where the polynomial is that of the mirror image, if the signature is negative, as that of
/// the right-handed trefoil. 10_48, 10_71, 10_91 and 10_104 are right-handed as the braid words have them.
std::span<const TableKnot> hands_of(std::size_t row);

/// Those of the entry with this name.
const TableKnot& entry_of(const PrimeKnot& knot);
Colourings colourings_of(const PrimeKnot& knot);

/// 1 or -1 where the Jones polynomial of a knot or link tells the hand, right or left, as said above; otherwise 0.
int hand_by(const Laurent& jones);

} // namespace loopwise::knots
