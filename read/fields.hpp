// Lines and fields of text files. In C++17, as the reader of mmCIF is.
#pragma once

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace loopwise::read {

/// Takes the first line off the text. Returns it without its line feed.
inline std::string_view next_line(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

/// A finite decimal number that is the whole field, whatever the locale.
inline std::optional<double> to_number(std::string_view field) {
    if (field.substr(0, 1) == "+" && field.substr(1, 1) != "-") field.remove_prefix(1);
    double value = 0.0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    if (error != std::errc{} || end != field.data() + field.size() || !std::isfinite(value)) return std::nullopt;
    return value;
}

inline std::string_view trimmed(std::string_view field) {
    constexpr std::string_view blanks = " \t\n\v\f\r";
    const std::size_t from = field.find_first_not_of(blanks);
    if (from == std::string_view::npos) return {};
    return field.substr(from, field.find_last_not_of(blanks) - from + 1);
}

} // namespace loopwise::read
