#include "knots/table.hpp"

#include "knots/alexander.hpp"
#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/jones.hpp"
#include "knots/modular.hpp"

namespace loopwise::knots {
namespace {

/// Of no meaning; at which none of the table's polynomials is 0.
constexpr std::uint64_t place = 1234567890123456789;
constexpr std::uint64_t inverse_place = modular::inverse(place);
static_assert(place < modular::prime);

/// Apart from half-odd exponents, which no knot has.
std::uint64_t value(const Laurent& polynomial) {
    std::uint64_t sum = 0;
    for (auto c = polynomial.coefficients.rbegin(); c != polynomial.coefficients.rend(); ++c)
        sum = modular::add(modular::multiply(sum, place), modular::residue(*c));
    const int lowest = polynomial.twice_lowest / 2;
    const std::uint64_t base = lowest < 0 ? inverse_place : place;
    return modular::multiply(sum,
                             modular::power(base, static_cast<std::uint64_t>(lowest < 0 ? -lowest : lowest)));
}

TableKnot entry(const std::string& name, const Laurent& jones_polynomial,
                const Laurent& alexander_polynomial) {
    const PolynomialHash print = polynomial_hash(jones_polynomial, alexander_polynomial);
    return {name,
            jones_polynomial,
            alexander_polynomial,
            *determinant(jones_polynomial),
            print,
            {modular::inverse(print.jones), modular::inverse(print.alexander)}};
}

std::vector<TableKnot> computed() {
    std::vector<TableKnot> table;
    table.reserve(2 * braid_rows.size());
    for (const BraidRow& row : braid_rows) {
        const Diagram diagram = closed_braid(row.strands, row.word);
        const Laurent own = *jones(diagram), other = mirrored(own), both = *alexander(diagram);
        if (own == other) {
            table.push_back(entry(row.name, own, both));
            continue;
        }
        const bool right = own.twice_lowest + own.twice_highest() > 0;
        table.push_back(entry(std::string("+") + row.name, right ? own : other, both));
        table.push_back(entry(std::string("-") + row.name, right ? other : own, both));
    }
    return table;
}

} // namespace

PolynomialHash polynomial_hash(const Laurent& jones, const Laurent& alexander) {
    return {value(jones), value(alexander)};
}

const std::vector<TableKnot>& knot_table() {
    static const std::vector<TableKnot> table = computed();
    return table;
}

} // namespace loopwise::knots
