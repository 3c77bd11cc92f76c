// The files that a page is made of, held as constants.
#pragma once

#include <string_view>

namespace loopwise::draw::assets {

std::string_view page_html();
std::string_view page_css();
std::string_view page_js();
std::string_view three_js(); ///< three.js (MIT licence), from the package libjs-three

} // namespace loopwise::draw::assets
