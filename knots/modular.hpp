// Arithmetic modulo the prime 2^61 - 1.
#pragma once

#include <cstdint>

namespace loopwise::modular {

__extension__ using Wide = unsigned __int128;

constexpr std::uint64_t prime = (std::uint64_t{1} << 61) - 1;

constexpr std::uint64_t add(std::uint64_t a, std::uint64_t b) {
    const std::uint64_t sum = a + b;
    return sum >= prime ? sum - prime : sum;
}
constexpr std::uint64_t subtract(std::uint64_t a, std::uint64_t b) { return add(a, prime - b); }
constexpr std::uint64_t multiply(std::uint64_t a, std::uint64_t b) {
    const Wide product = Wide{a} * b;
    return add(static_cast<std::uint64_t>(product & prime), static_cast<std::uint64_t>(product >> 61));
}
constexpr std::uint64_t power(std::uint64_t base, std::uint64_t exponent) {
    std::uint64_t result = 1;
    for (; exponent > 0; exponent /= 2, base = multiply(base, base))
        if (exponent % 2 == 1) result = multiply(result, base);
    return result;
}
constexpr std::uint64_t inverse(std::uint64_t a) { return power(a, prime - 2); }

/// The residue of a signed number.
constexpr std::uint64_t residue(std::int64_t a) {
    const std::uint64_t size = (a < 0 ? 0 - static_cast<std::uint64_t>(a) : static_cast<std::uint64_t>(a)) % prime;
    return a < 0 && size != 0 ? prime - size : size;
}
/// The number nearest to 0 with this residue.
constexpr std::int64_t nearest(std::uint64_t residue) {
    return residue > prime / 2 ? -static_cast<std::int64_t>(prime - residue) : static_cast<std::int64_t>(residue);
}

} // namespace loopwise::modular
