// What a file holds, unpacked.
#pragma once

#include <string>
#include <string_view>

namespace loopwise::read {

/// The name of the standard input.
inline constexpr const char* standard_input = "-";

/// The whole file, or the standard input; unpacked if it is gzipped, whatever its name. Throws
/// std::runtime_error with the reason: a gzipped file that is cut off or whose checksum is wrong is refused.
std::string read_bytes(const std::string& path);

/// Unpacks gzipped bytes, several members too. Throws as read_bytes().
std::string unpacked(std::string_view gzipped);

/// Line ends of a carriage return, with or without a line feed, become line feeds.
std::string with_line_feeds(std::string text);

} // namespace loopwise::read
