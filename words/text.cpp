#include "words/text.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <filesystem>

namespace loopwise::words {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_number(const std::string& text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const char* const begin = text.data() + (text.starts_with('+') ? 1 : 0);
    const auto [rest, error] = std::from_chars(begin, end, number);
    return error == std::errc{} && rest == end;
}

/// See csv_row().
bool could_be_formula(const std::string& text) {
    if (text.size() < 2 || std::string_view("=+-@\t\r").find(text[0]) == std::string_view::npos) return false;
    if (text[0] != '+' && text[0] != '-') return true;
    constexpr std::string_view of_formulas = "=|!@'\"\\*/&<>", of_polynomials = " 0123456789t^+-";
    if (is_number(text)) return false;
    if (text.find('t') != std::string::npos && text.find_first_not_of(of_polynomials) == std::string::npos)
        return false;
    const bool is_name =
        text.find_first_of("_ ") != std::string::npos ||
        std::all_of(text.begin() + 1, text.end(), [](unsigned char c) { return std::isalnum(c) != 0 || c == '.'; });
    return !is_digit(text[1]) || text.find_first_of(of_formulas) != std::string::npos || !is_name;
}

std::string csv_field(const std::string& given) {
    std::string text = printable(given, Lines::several);
    if (could_be_formula(given)) text.insert(text.begin(), '\'');
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string field = "\"";
    for (const char c : text) field += c == '"' ? "\"\"" : std::string(1, c);
    return field + '"';
}

} // namespace

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string all;
    for (const std::string& text : texts) all.append(&text == &texts.front() ? "" : separator).append(text);
    return all;
}

std::string listed(const std::vector<std::string>& names) {
    constexpr std::size_t most = 20;
    std::vector<std::string> first(names.begin(),
                                   names.begin() + static_cast<std::ptrdiff_t>(std::min(names.size(), most)));
    std::replace(first.begin(), first.end(), std::string(), std::string("one without a name"));
    return joined(first, ", ") + (names.size() > most ? " and " + std::to_string(names.size() - most) + " more" : "");
}

std::string csv_row(const std::vector<std::string>& fields) {
    std::string row;
    for (const std::string& field : fields) row.append(&field == &fields.front() ? "" : ",").append(csv_field(field));
    return row + '\n';
}

std::string left(std::string_view text, std::size_t width) {
    return std::string(text).append(width - std::min(width, text.size()), ' ');
}

std::string right(std::string_view text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ').append(text);
}

std::size_t widest(const std::vector<std::string>& texts, std::size_t least) {
    for (const std::string& text : texts) least = std::max(least, text.size());
    return least;
}

std::string extension_of(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

std::string without_gz(const std::string& path) {
    constexpr std::string_view gz = ".gz";
    return path.ends_with(gz) ? path.substr(0, path.size() - gz.size()) : path;
}

std::string file_title(const std::string& path) {
    return path == standard_input ? "standard input" : std::filesystem::path(without_gz(path)).stem().string();
}

std::string title(const std::string& path, const std::string& chain) {
    return file_title(path) + (chain.empty() ? "" : ", chain " + chain);
}

std::string printable(std::string text, Lines lines) {
    constexpr char first_c1 = '\x80', last_c1 = '\x9f', lead_of_c1 = '\xc2', deleted = '\x7f';
    for (std::size_t i = 0; i < text.size(); ++i) {
        char& c = text[i];
        const bool is_c1 = i > 0 && text[i - 1] == lead_of_c1 && c >= first_c1 && c <= last_c1;
        if (is_c1) text[i - 1] = '?';
        const bool is_control = (c >= 0 && c < ' ') || c == deleted || is_c1;
        if (is_control && !(c == '\n' && lines == Lines::several)) c = '?';
    }
    return text;
}

std::string valid_utf8(std::string_view text) {
    constexpr std::string_view replacement = "\xef\xbf\xbd";
    std::string valid;
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = [&](std::size_t at) { return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U; };
        const unsigned lead = byte(i);
        const std::size_t length = lead < 0x80 ? 1 : lead >> 5 == 6 ? 2 : lead >> 4 == 14 ? 3 : lead >> 3 == 30 ? 4 : 0;
        constexpr std::array<unsigned, 5> lead_bits{0, 0x7f, 0x1f, 0x0f, 0x07}, least{0, 0, 0x80, 0x800, 0x10000};
        unsigned point = length > 0 ? lead & lead_bits[length] : 0;
        bool is_valid = length > 0;
        for (std::size_t k = 1; k < length; ++k) {
            is_valid = is_valid && byte(i + k) >> 6 == 2;
            point = point << 6 | (byte(i + k) & 0x3f);
        }
        is_valid = is_valid && point >= least[length] && point <= 0x10ffff && point >> 11 != 0xd800 >> 11 &&
                   point != 0xfffe && point != 0xffff;
        valid += is_valid ? text.substr(i, length) : replacement;
        i += is_valid ? length : 1;
    }
    return valid;
}

std::string quoted(std::string_view text, std::size_t longest) {
    std::string out(text.substr(0, longest));
    for (char& c : out)
        if (c < ' ' || c > '~') c = '?';
    return "'" + out + (text.size() > longest ? "...'" : "'");
}

} // namespace loopwise::words
