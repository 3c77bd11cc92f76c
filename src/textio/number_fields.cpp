#include "src/textio/number_fields.hpp"

#include <charconv>
#include <cstddef>
#include <sstream>
#include <string>
#include <type_traits>

namespace loopwise::textio {
namespace {

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// A decimal number without exponent and of few digits is a whole number below 2^53 divided by a power of
/// ten that is exact too: one division rounds it correctly (Clinger, "How to read floating point numbers
/// accurately", 1990). Returns where the number ends, `from` when it is none of these.
const char* short_decimal(const char* from, const char* end, double& number) {
    static constexpr double powers_of_ten[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    constexpr std::ptrdiff_t most_digits = 15;
    const char* at = from != end && *from == '-' ? from + 1 : from;
    const char* const first = at;
    std::int64_t digits = 0;
    for (; at != end && is_digit(*at) && at - first < most_digits; ++at) digits = 10 * digits + (*at - '0');
    const char* const point = at;
    if (at != end && *at == '.')
        for (++at; at != end && is_digit(*at) && at - first <= most_digits; ++at)
            digits = 10 * digits + (*at - '0');
    if (at != end && !is_space(*at)) return from;
    const std::ptrdiff_t decimals = at == point ? 0 : at - point - 1;
    const double size = static_cast<double>(digits) / powers_of_ten[decimals];
    number = *from == '-' ? -size : size;
    return at;
}

/// Takes one number and the space before it off the line. The stream and from_chars() agree on numbers
/// that begin with a digit or a minus and a digit, end before a space and are in range: all else, such
/// as a plus, a bare point or a name, is left to the stream.
template <class Number> bool take(std::string_view& line, Number& number) {
    const char* from = line.data();
    const char* const end = from + line.size();
    while (from != end && is_space(*from)) ++from;
    const char* const digits = from != end && *from == '-' ? from + 1 : from;
    if (digits == end || !is_digit(*digits)) return false;
    const char* rest = from;
    if constexpr (std::is_same_v<Number, double>) rest = short_decimal(from, end, number);
    if (rest == from) {
        const auto [stop, error] = std::from_chars(from, end, number);
        if (error != std::errc{} || (stop != end && !is_space(*stop))) return false;
        rest = stop;
    }
    line.remove_prefix(static_cast<std::size_t>(rest - line.data()));
    return true;
}

} // namespace

void read_fields(std::string_view line, ChainAtom& atom) {
    std::istringstream fields{std::string(line)};
    fields.exceptions(std::ios_base::badbit); // out of memory is not a field that does not read
    fields >> atom.id >> atom.x >> atom.y >> atom.z;
}

bool read_plain_fields(std::string_view line, ChainAtom& atom) {
    ChainAtom read{};
    if (!take(line, read.id) || !take(line, read.x) || !take(line, read.y) || !take(line, read.z))
        return false;
    atom = read;
    return true;
}

} // namespace loopwise::textio
