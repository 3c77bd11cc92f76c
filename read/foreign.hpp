// Files of other formats, which are refused by name.
#pragma once

#include <string>
#include <string_view>

namespace loopwise::read {

/// Throws std::runtime_error with the format and what to do if the content, or else the extension, is that of a format
/// that is not read. Lines must end in line feeds.
void refuse_foreign(std::string_view content, const std::string& extension);

} // namespace loopwise::read
