#include "words/text.hpp"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace loopwise::words {
namespace {

std::string csv_field(const std::string& text) {
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

std::string quoted(std::string_view text, std::size_t longest) {
    std::string out(text.substr(0, longest));
    for (char& c : out)
        if (c < ' ' || c > '~') c = '?';
    return "'" + out + (text.size() > longest ? "...'" : "'");
}

} // namespace loopwise::words
