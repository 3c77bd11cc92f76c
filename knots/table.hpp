// The table of prime knots, and their polynomials.
#pragma once

#include "knots/knot_type.hpp"

#include <cstdint>
#include <utility>
#include <vector>

namespace loopwise::knots {

/// Every knot with a diagram of at most nine crossings is in the table or a sum of knots in it.
constexpr int table_crossings = 9;
/// Every link of two loops with a diagram of at most five crossings is in the table of links (links.cpp), is a sum of a
/// Hopf link and a trefoil, or comes apart; and the polynomials of these differ.
constexpr int table_link_crossings = 5;

/// Values of both polynomials at one place modulo a prime. The values of a sum are the products of its factors'.
struct PolynomialHash {
    std::uint64_t jones, alexander;
    bool operator==(const PolynomialHash&) const = default;
};
PolynomialHash polynomial_hash(const Laurent& jones, const Laurent& alexander);

struct TableKnot {
    PrimeKnot knot;
    Laurent jones, alexander;
    std::int64_t determinant;
    PolynomialHash hash, inverse;
};

/// The Jones polynomials of a knot or link and of its mirror image, the right-handed one first; one where they agree.
/// A knot is right-handed where the lowest and the highest exponent add up to more than 0.
std::vector<std::pair<Hand, Laurent>> by_hand(const Laurent& jones);

/// The prime knots to nine crossings in Rolfsen's order, + before -; one entry where the polynomials do not tell the
/// hands apart. Computed from braid words at the first call, in about a millisecond; the same for all threads.
const std::vector<TableKnot>& knot_table();

} // namespace loopwise::knots
