#include "knots/table.hpp"

#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/invariants.hpp"
#include "knots/modular.hpp"

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

TableKnot entry(const PrimeKnot& knot, const Laurent& jones_polynomial, const Laurent& alexander_polynomial) {
    const PolynomialHash hash = polynomial_hash(jones_polynomial, alexander_polynomial);
    return {knot,
            jones_polynomial,
            alexander_polynomial,
            *determinant(jones_polynomial),
            hash,
            {modular::inverse(hash.jones), modular::inverse(hash.alexander)}};
}

std::vector<TableKnot> computed() {
    std::vector<TableKnot> table;
    table.reserve(2 * braid_rows.size());
    for (const BraidRow& row : braid_rows) {
        const Diagram diagram = closed_braid(row.strands, row.word);
        const Laurent own = *jones(diagram), both = *alexander(diagram);
        for (const auto& [hand, polynomial] : by_hand(own))
            table.push_back(entry({row.crossings, row.number, hand}, polynomial, both));
    }
    return table;
}

} // namespace

PolynomialHash polynomial_hash(const Laurent& jones, const Laurent& alexander) {
    return {value(jones), value(alexander)};
}

std::vector<std::pair<Hand, Laurent>> by_hand(const Laurent& jones) {
    const Laurent mirror = mirrored(jones);
    if (jones == mirror) return {{Hand::none, jones}};
    const bool right = jones.twice_lowest + jones.twice_highest() > 0;
    return {{Hand::right, right ? jones : mirror}, {Hand::left, right ? mirror : jones}};
}

const std::vector<TableKnot>& knot_table() {
    static const std::vector<TableKnot> table = computed();
    return table;
}

} // namespace loopwise::knots
