// Errors of readers.
#pragma once

#include <stdexcept>
#include <string>

namespace loopwise::read {

/// The reason follows the name of the file: "loop.pdb: truncated PDB: it ends inside model 1".
[[noreturn]] inline void refuse(const std::string& reason) { throw std::runtime_error(reason); }

[[noreturn]] inline void refuse_line(std::size_t number, const std::string& reason) {
    refuse("line " + std::to_string(number) + ": " + reason);
}

} // namespace loopwise::read
