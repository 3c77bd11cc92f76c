// How an input is refused.
#pragma once

#include <stdexcept>
#include <string>

namespace loopwise::read {

/// The reason makes a sentence with the name of the file before it.
[[noreturn]] inline void refuse(const std::string& reason) { throw std::runtime_error(reason); }

[[noreturn]] inline void refuse_line(std::size_t number, const std::string& reason) {
    refuse("line " + std::to_string(number) + " " + reason);
}

} // namespace loopwise::read
