// Residue numbers above 9999 in the four columns of a PDB file (https://cci.lbl.gov/hybrid_36).
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace loopwise::read {

/// The number of a hybrid-36 field: A000 follows 9999, and a000 follows ZZZZ. None for any other text.
inline std::optional<std::int32_t> hybrid_36(std::string_view field) {
    constexpr std::string_view upper = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ",
                               lower = "0123456789abcdefghijklmnopqrstuvwxyz";
    constexpr std::int32_t base = 36, a000 = 10 * base * base * base, letters = 26 * base * base * base;
    if (field.size() != 4 || (field[0] >= '0' && field[0] <= '9')) return std::nullopt;
    const bool is_lower = lower.find(field[0]) != std::string_view::npos;
    std::int32_t value = 0;
    for (const char c : field) {
        const std::size_t digit = (is_lower ? lower : upper).find(c);
        if (digit == std::string_view::npos) return std::nullopt;
        value = base * value + static_cast<std::int32_t>(digit);
    }
    return value - a000 + 10'000 + (is_lower ? letters : 0);
}

} // namespace loopwise::read
