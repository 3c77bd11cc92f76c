#include "words/numbers.hpp"

#include <array>
#include <charconv>

namespace loopwise::words {
namespace {

template <class... Format> std::string text_of(double value, Format... format) {
    std::array<char, 512> text; // the largest number has 309 digits before the point
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value, format...).ptr};
}

} // namespace

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

std::string fixed(double value, int decimals) { return text_of(value, std::chars_format::fixed, decimals); }

std::string general(double value, int digits) { return text_of(value, std::chars_format::general, digits); }

std::string exact(double value) { return text_of(value); }

std::string percent(double share) { return fixed(100.0 * share, 1) + " %"; }

std::string percent(std::size_t part, std::size_t whole) {
    if (whole == 0) return percent(0.0);
    return fixed(100.0 * static_cast<double>(part) / static_cast<double>(whole), 1) + " %";
}

} // namespace loopwise::words
