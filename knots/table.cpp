#include "knots/table.hpp"

#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/invariants.hpp"
#include "knots/modular.hpp"
#include "knots/signature.hpp"

#include <algorithm>
#include <cstdlib>
#include <mutex>

namespace loopwise::knots {
namespace {

/// Any place at which none of the table's polynomials is 0.
constexpr std::uint64_t place = 1234567890123456789;
constexpr std::uint64_t inverse_place = modular::inverse(place);
static_assert(place < modular::prime);

/// The polynomial's value at the place. Its exponents are whole, as those of every knot.
std::uint64_t value(const Laurent& polynomial) {
    std::uint64_t sum = 0;
    for (auto c = polynomial.coefficients.rbegin(); c != polynomial.coefficients.rend(); ++c)
        sum = modular::add(modular::multiply(sum, place), modular::residue(*c));
    const int lowest = polynomial.twice_lowest / 2;
    const std::uint64_t base = lowest < 0 ? inverse_place : place;
    return modular::multiply(sum, modular::power(base, static_cast<std::uint64_t>(lowest < 0 ? -lowest : lowest)));
}

struct Row {
    std::once_flag computed, coloured;
    std::vector<TableKnot> hands;
    Hand hand = Hand::none; ///< of the braid
    Colourings colourings;  ///< of the braid
};

Diagram braid_of(std::size_t row) { return closed_braid(braid_rows[row].strands, braid_rows[row].word); }

const Colourings& colour(std::size_t index, Row& row) {
    std::call_once(row.coloured, [&] { row.colourings = *colourings(braid_of(index)); });
    return row.colourings;
}

void compute(std::size_t index, Row& row) {
    const Diagram diagram = braid_of(index);
    const Laurent v = *jones(diagram), delta = *alexander(diagram);
    const int sigma = *signature(diagram);
    int right = hand_by(v);
    if (right == 0) right = -sigma;
    if (right == 0 && v == mirrored(v) && mirrored(colour(index, row)) != row.colourings) right = 1;
    row.hand = right > 0 ? Hand::right : right < 0 ? Hand::left : Hand::none;
    const auto add = [&](Hand hand) {
        const bool own = hand == row.hand;
        const Laurent polynomial = own ? v : mirrored(v);
        const PolynomialHash hash = polynomial_hash(polynomial, delta);
        row.hands.push_back({{braid_rows[index].crossings, braid_rows[index].number, hand},
                             polynomial,
                             delta,
                             own ? sigma : -sigma,
                             hash,
                             {modular::inverse(hash.jones), modular::inverse(hash.alexander)}});
    };
    if (right == 0) return add(Hand::none);
    add(Hand::right);
    add(Hand::left);
}

Row& row_at(std::size_t index) {
    static std::array<Row, braid_rows.size()> rows;
    Row& row = rows[index];
    std::call_once(row.computed, compute, index, std::ref(row));
    return row;
}

} // namespace

PolynomialHash polynomial_hash(const Laurent& jones, const Laurent& alexander) {
    return {value(jones), value(alexander)};
}

int hand_by(const Laurent& jones) {
    const int sum = jones.twice_lowest + jones.twice_highest();
    if (sum != 0) return sum > 0 ? 1 : -1;
    const auto& c = jones.coefficients;
    const auto [low, high] = std::mismatch(c.begin(), c.end(), c.rbegin());
    return low == c.end() ? 0 : std::abs(*high) > std::abs(*low) ? 1 : -1;
}

std::size_t row_of(const PrimeKnot& knot) {
    const auto row = std::find_if(braid_rows.begin(), braid_rows.end(), [&knot](const BraidRow& r) {
        return r.crossings == knot.crossings && r.number == knot.number;
    });
    return static_cast<std::size_t>(row - braid_rows.begin());
}

std::span<const TableKnot> hands_of(std::size_t row) { return row_at(row).hands; }

const TableKnot& entry_of(const PrimeKnot& knot) {
    const std::span<const TableKnot> hands = hands_of(row_of(knot));
    return hands[knot.hand == Hand::left ? 1 : 0];
}

Colourings colourings_of(const PrimeKnot& knot) {
    const std::size_t index = row_of(knot);
    Row& row = row_at(index);
    return knot.hand == row.hand ? colour(index, row) : mirrored(colour(index, row));
}

} // namespace loopwise::knots
