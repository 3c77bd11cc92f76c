// How an input is refused.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace loopwise::read {

/// The reason makes a sentence with the name of the file before it.
[[noreturn]] inline void refuse(const std::string& reason) { throw std::runtime_error(reason); }

[[noreturn]] inline void refuse_line(std::size_t number, const std::string& reason) {
    refuse("line " + std::to_string(number) + " " + reason);
}

/// Text of a file as it can be shown in a message: short and printable.
inline std::string shown(std::string_view text) {
    constexpr std::size_t longest = 40;
    std::string out(text.substr(0, longest));
    for (char& c : out)
        if (c < ' ' || c > '~') c = '?';
    return "'" + out + (text.size() > longest ? "...'" : "'");
}

} // namespace loopwise::read
