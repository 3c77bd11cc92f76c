// Files that are part of the program.
#pragma once

#include <string_view>

namespace loopwise::assets {

std::string_view page_html();
std::string_view page_css();
std::string_view page_js();
std::string_view three_js(); ///< three.js (MIT licence), from the package libjs-three

} // namespace loopwise::assets
