// The bytes of a file, unpacked.
#pragma once

#include <string>
#include <string_view>

namespace loopwise::read {

/// The whole file, or the standard input; unpacked if it is gzipped, whatever its name. Throws
/// std::runtime_error with the reason, also if gzip data is truncated or its checksum is wrong.
std::string read_bytes(const std::string& path);

/// Unpacks gzip data of one or several members. Throws as read_bytes().
std::string unpacked(std::string_view gzipped);

/// Makes every carriage return, with or without a line feed, a line feed.
std::string with_line_feeds(std::string text);

} // namespace loopwise::read
