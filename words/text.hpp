// Texts inside other texts: lists, fields and quotations.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace loopwise::words {

std::string joined(const std::vector<std::string>& texts, std::string_view separator);

/// "A, B, C"; of many names only the first: "A, B, ... and 80 more".
std::string listed(const std::vector<std::string>& names);

/// A row of CSV; fields are in quotes where they need them.
std::string csv_row(const std::vector<std::string>& fields);

/// The text with blanks after it, or before it, up to the width.
std::string left(std::string_view text, std::size_t width);
std::string right(std::string_view text, std::size_t width);
/// The width of the widest text, or the least if that is more.
std::size_t widest(const std::vector<std::string>& texts, std::size_t least);

/// The path that means the standard input, or as an output the standard output.
inline constexpr std::string_view standard_input = "-", standard_output = "-";

/// The extension of a file's name, in lower case: ".pdb".
std::string extension_of(const std::string& path);

/// The name without .gz.
std::string without_gz(const std::string& path);

/// A file in a title: its name without folder, extension and .gz.
std::string file_title(const std::string& path);
std::string title(const std::string& path, const std::string& chain);

inline const char* yes_or_no(bool is) { return is ? "yes" : "no"; }

/// Text of a file quoted in a message: short and printable.
std::string quoted(std::string_view text, std::size_t longest = 40);

} // namespace loopwise::words
