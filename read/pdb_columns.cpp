#include "read/pdb_columns.hpp"

#include "read/fields.hpp"

#include <cctype>

namespace loopwise::read::pdb {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// A number of eight columns, of which three are decimals.
bool is_coordinate(std::string_view text) {
    constexpr std::size_t point = 4;
    if (text.size() < 8 || text[point] != '.' || !to_number(trimmed(text))) return false;
    return is_digit(text[point + 1]) && is_digit(text[point + 2]) && is_digit(text[point + 3]);
}

bool is_word(std::string_view text) {
    const std::string_view word = trimmed(text);
    return !word.empty() && word.find(' ') == std::string_view::npos;
}

/// Whether every column that has a fixed meaning can have it.
bool fits(std::string_view line) {
    if (line.size() < end_of_coordinates) return false;
    return line[10] != ' ' && line[11] == ' ' && is_word(columns(line, 13, 16)) && is_word(columns(line, 18, 20)) &&
           is_word(columns(line, 23, 26)) && line[25] != ' ' && trimmed(columns(line, 28, 30)).empty() &&
           is_coordinate(columns(line, 31, 38)) && is_coordinate(columns(line, 39, 46)) &&
           is_coordinate(columns(line, 47, 54));
}

/// A name of a record is not part of a longer word.
bool begins_with(std::string_view line, std::string_view record) {
    if (!line.starts_with(record)) return false;
    const char next = line.size() > record.size() ? line[record.size()] : ' ';
    return std::isalpha(static_cast<unsigned char>(next)) == 0 && next != '_';
}

} // namespace

std::string_view columns(std::string_view line, std::size_t first, std::size_t last) {
    return line.size() < first ? std::string_view() : line.substr(first - 1, last - first + 1);
}

std::string field(std::string_view line, std::size_t first, std::size_t last) {
    return std::string(trimmed(columns(line, first, last)));
}

bool is_atom(std::string_view line) {
    if (begins_with(line, "ATOM") || begins_with(line, "HETATM")) return true;
    line = trimmed(line);
    return line.size() >= end_of_coordinates && (begins_with(line, "ATOM") || begins_with(line, "HETATM"));
}

bool is_whole_atom(std::string_view line) {
    return line.starts_with("ATOM  ") || line.starts_with("HETATM") ||
           (line.size() >= end_of_coordinates && is_atom(line));
}

std::string_view atom_columns(std::string_view line) {
    constexpr std::size_t farthest = 8;
    if (fits(line)) return line;
    std::string_view found = line;
    for (std::size_t shift = 1; shift <= farthest && shift < line.size(); ++shift) {
        if (!fits(line.substr(shift))) continue;
        if (found.size() != line.size()) return line;
        found = line.substr(shift);
    }
    return found;
}

} // namespace loopwise::read::pdb
