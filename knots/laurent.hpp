// Laurent polynomials in t with integer coefficients; the exponents are all whole, or all half-odd.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loopwise::knots {

/// Neither the first nor the last coefficient is 0; the zero polynomial has none.
struct Laurent {
    int twice_lowest = 0; ///< exponents are half-odd in the Jones polynomial of a link of two loops
    std::vector<std::int64_t> coefficients;

    static Laurent one() { return {0, {1}}; }
    int twice_highest() const { return twice_lowest + 2 * (static_cast<int>(coefficients.size()) - 1); }
    bool operator==(const Laurent&) const = default;
};

/// Drops zeros at both ends.
void trim(Laurent& polynomial);

/// The polynomial in 1/t: the Jones polynomial of the mirror image.
Laurent mirrored(const Laurent& polynomial);

/// Nothing when a coefficient leaves the 64-bit range.
std::optional<Laurent> product(const Laurent& a, const Laurent& b);

/// The absolute value at t = -1 of a polynomial with whole exponents. Both the Jones and the Alexander polynomial give
/// the determinant of the knot. Nothing when it leaves the 64-bit range.
std::optional<std::int64_t> determinant(const Laurent& polynomial);

/// As "-t^-4 + t^-3 + t^-1", lowest exponent first, "0" for the zero polynomial; half-odd exponents as t^(5/2).
std::string text(const Laurent& polynomial);

} // namespace loopwise::knots
