// The prime knots that have names, and their polynomials.
#pragma once

#include "knots/laurent.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace loopwise::knots {

/// Every knot that can be drawn with so few crossings is in the table or a sum of knots in it.
constexpr int table_crossings = 9;

/// The polynomials at one place modulo a prime: those of a sum are the products.
struct PolynomialHash {
    std::uint64_t jones, alexander;
    bool operator==(const PolynomialHash&) const = default;
};
PolynomialHash polynomial_hash(const Laurent& jones, const Laurent& alexander);

struct TableKnot {
    std::string name; ///< with its hand: "+3_1", "-3_1", "4_1"
    Laurent jones, alexander;
    std::int64_t determinant;
    PolynomialHash print, inverse;
};

/// The prime knots to nine crossings in Rolfsen's order, + before -; one entry for two hands that the polynomials
/// cannot tell apart. Computed from braid words at the first call, in about a millisecond; the same for all threads.
const std::vector<TableKnot>& knot_table();

} // namespace loopwise::knots
