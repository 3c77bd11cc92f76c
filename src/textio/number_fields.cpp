#include "src/textio/number_fields.hpp"

#include <charconv>
#include <cstddef>
#include <sstream>
#include <string>

namespace loopwise::textio {
namespace {

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// Removes one number and the space before it from the line. The stream and from_chars() agree on numbers
/// that begin with a digit or a minus and a digit, end before a space and are in range. Everything else, such
/// as a plus, a bare point or a name, is left to the stream.
template <class Number> bool take(std::string_view& line, Number& number) {
    const char* from = line.data();
    const char* const end = from + line.size();
    while (from != end && is_space(*from)) ++from;
    const char* const digits = from != end && *from == '-' ? from + 1 : from;
    if (digits == end || !is_digit(*digits)) return false;
    const auto [stop, error] = std::from_chars(from, end, number);
    if (error != std::errc{} || (stop != end && !is_space(*stop))) return false;
    line.remove_prefix(static_cast<std::size_t>(stop - line.data()));
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
