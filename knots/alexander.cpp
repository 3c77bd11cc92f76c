#include "knots/invariants.hpp"

#include "knots/arcs.hpp"
#include "knots/modular.hpp"

#include <algorithm>
#include <array>

namespace loopwise::knots {
namespace {

using namespace modular;

// The polynomial is the determinant of a matrix with a row and a column for every crossing but one, and entries of
// degree at most 1. With n crossings its degree is less than n, and its values at t = 1 to n, modulo a prime, give all
// coefficients modulo the prime. Kauffman ("Formal knot theory", 1983) writes the polynomial as a sum over the states
// of the diagram, each a power of t with a sign. States are spanning trees of the checkerboard graph: sets of its n
// edges. So no coefficient is larger than 2^n, and the residue nearest to 0 is the coefficient itself.
constexpr std::size_t most = most_crossings;
static_assert(most_crossings <= 59, "coefficients have to stay below half of the prime");

constexpr std::array<std::uint64_t, most + 1> make_inverses() {
    std::array<std::uint64_t, most + 1> result{};
    for (std::size_t i = 1; i <= most; ++i) result[i] = inverse(i);
    return result;
}
constexpr std::array<std::uint64_t, most + 1> inverses = make_inverses();

/// A determinant as a fraction.
struct Fraction {
    std::uint64_t above, below;
};

/// Elimination without division. The matrix is sparse: most rows are skipped.
Fraction determinant(std::vector<std::uint64_t>& matrix, std::size_t size) {
    Fraction result{1, 1};
    for (std::size_t k = 0; k < size; ++k) {
        std::size_t pivot = k;
        while (pivot < size && matrix[pivot * size + k] == 0) ++pivot;
        if (pivot == size) return {0, 1};
        std::uint64_t* const row = &matrix[k * size];
        if (pivot != k) {
            std::swap_ranges(row, row + size, &matrix[pivot * size]);
            result.above = subtract(0, result.above);
        }
        result.above = multiply(result.above, row[k]);
        for (std::size_t i = pivot + 1; i < size; ++i) {
            std::uint64_t* const lower = &matrix[i * size];
            if (lower[k] == 0) continue;
            const std::uint64_t factor = subtract(0, lower[k]);
            for (std::size_t j = k + 1; j < size; ++j) {
                const std::uint64_t scaled = lower[j] == 0 ? 0 : multiply(lower[j], row[k]);
                lower[j] = row[j] == 0 ? scaled : add(scaled, multiply(factor, row[j]));
            }
            result.below = multiply(result.below, row[k]);
        }
    }
    return result;
}

/// The relation of a crossing between the arcs that meet there: (1 - t) over + t one - other = 0.
Fraction value_at(std::uint64_t t, const std::vector<Meeting>& meetings, std::vector<std::uint64_t>& matrix) {
    const std::size_t size = meetings.size() - 1;
    matrix.assign(size * size, 0);
    for (std::size_t row = 0; row < size; ++row) {
        const auto count = [&](int arc, std::uint64_t coefficient) {
            if (arc == static_cast<int>(size)) return;
            std::uint64_t& entry = matrix[row * size + static_cast<std::size_t>(arc)];
            entry = add(entry, coefficient);
        };
        count(meetings[row].over, subtract(1, t));
        count(meetings[row].one, t);
        count(meetings[row].other, prime - 1);
    }
    return determinant(matrix, size);
}

/// The coefficients of the polynomial with these values at 1, 2, 3 and so on, by Newton's divided differences.
std::vector<std::uint64_t> interpolated(std::vector<std::uint64_t> values) {
    const std::size_t count = values.size();
    for (std::size_t step = 1; step < count; ++step)
        for (std::size_t i = count - 1; i >= step; --i)
            values[i] = multiply(subtract(values[i], values[i - 1]), inverses[step]);
    std::vector<std::uint64_t> result(count, 0);
    for (std::size_t i = count; i-- > 0;) { // times t - (i + 1), plus the difference
        for (std::size_t j = count - 1; j > 0; --j) result[j] = subtract(result[j - 1], multiply(result[j], i + 1));
        result[0] = subtract(values[i], multiply(result[0], i + 1));
    }
    return result;
}

} // namespace

std::optional<Laurent> alexander(const Diagram& diagram) {
    const std::size_t count = diagram.crossings.size();
    if (count > most || diagram.loops != 1) return {};
    if (count < 3) return Laurent::one();
    const Arcs arcs = arcs_of(diagram);
    std::vector<std::uint64_t> matrix, values, below, products{1};
    for (std::size_t t = 1; t <= count; ++t) {
        const Fraction value = value_at(t, arcs.meetings, matrix);
        values.push_back(value.above);
        below.push_back(value.below);
        products.push_back(multiply(products.back(), value.below));
    }
    // One modular inversion gives those of all.
    std::uint64_t rest = inverse(products.back());
    for (std::size_t i = count; i-- > 0;) {
        values[i] = multiply(values[i], multiply(rest, products[i]));
        rest = multiply(rest, below[i]);
    }
    Laurent result;
    for (const std::uint64_t c : interpolated(std::move(values))) result.coefficients.push_back(nearest(c));
    trim(result);
    result.twice_lowest = 1 - static_cast<int>(result.coefficients.size());
    std::int64_t sum = 0;
    for (const std::int64_t c : result.coefficients) sum += c;
    if (sum < 0)
        for (std::int64_t& c : result.coefficients) c = -c;
    return result;
}

} // namespace loopwise::knots
