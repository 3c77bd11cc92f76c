#include "src/textio/number_text.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <locale>
#include <sstream>

namespace loopwise::textio {
namespace {

constexpr int significant_digits = 6;
constexpr std::uint32_t least_significand = 100'000;
constexpr std::uint32_t beyond_significand = 1'000'000;

/// From 0.1 to 1,000,000, where the text has no exponent and few leading zeros.
constexpr std::array powers_of_ten{1e-1, 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

char* write_digits(char* to, std::uint32_t digits, int count) {
    for (int i = count; i-- > 0; digits /= 10) to[i] = static_cast<char>('0' + digits % 10);
    return to + count;
}

} // namespace

// A number of d digits before the point has the significand |number| 10^(6 - d), rounded to a whole
// number. The product is off by less than 1e-10, being below 1e6 and rounded once, as the power of ten
// is exact; so the rounding is known wherever the product is not within a millionth of a tie.
std::size_t write_coordinate(char* to, double number) {
    constexpr double near_tie = 1e-6;
    const double size = std::fabs(number);
    if (!(size >= powers_of_ten.front() && size < powers_of_ten.back())) return 0;
    int whole_digits = 0;
    while (size >= powers_of_ten[static_cast<std::size_t>(whole_digits) + 1]) ++whole_digits;
    int decimals = significant_digits - whole_digits;

    const double scaled = size * powers_of_ten[static_cast<std::size_t>(decimals) + 1];
    auto significand = static_cast<std::uint32_t>(scaled + 0.5);
    const double from_tie = scaled - std::floor(scaled) - 0.5;
    if (std::fabs(from_tie) < near_tie || significand < least_significand ||
        significand >= beyond_significand)
        return 0;
    for (; decimals > 0 && significand % 10 == 0; --decimals) significand /= 10;

    char* end = to;
    if (std::signbit(number)) *end++ = '-';
    std::uint32_t scale = 1;
    for (int i = 0; i < decimals; ++i) scale *= 10;
    end = write_digits(end, significand / scale, std::max(whole_digits, 1));
    if (decimals > 0) {
        *end++ = '.';
        end = write_digits(end, significand % scale, decimals);
    }
    return static_cast<std::size_t>(end - to);
}

NumberText::NumberText() : classic_(std::locale() == std::locale::classic()) {}

std::string_view NumberText::of(std::int32_t number) {
    if (!classic_) return by_stream(number);
    char* const end = std::to_chars(digits_, std::end(digits_), number).ptr;
    return {digits_, static_cast<std::size_t>(end - digits_)};
}

std::string_view NumberText::of(double number) {
    if (!classic_ || !std::isfinite(number)) return by_stream(number);
    const std::size_t length = write_coordinate(digits_, number);
    if (length > 0) return {digits_, length};
    char* const end =
        std::to_chars(digits_, std::end(digits_), number, std::chars_format::general, significant_digits).ptr;
    return {digits_, static_cast<std::size_t>(end - digits_)};
}

template <class Number> std::string_view NumberText::by_stream(Number number) {
    std::ostringstream stream;
    stream.exceptions(std::ios_base::badbit); // out of memory must not pass for an empty text
    stream << number;
    return text_ = std::move(stream).str();
}

} // namespace loopwise::textio
