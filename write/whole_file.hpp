// Files that are written whole or not at all, and never over an input.
#pragma once

#include <string>
#include <vector>

namespace loopwise::write {

/// A file to write, and the extension that it must have to be overwritten; empty: any.
struct Output {
    std::string path; ///< empty: no such output
    const char* extension;
};

/// Throws std::runtime_error with the reason if an output or the standard output is an input, if two outputs
/// are one file, or if an output would replace a file with another extension.
void refuse_harmful_outputs(const std::vector<std::string>& inputs, const std::vector<Output>& outputs);

/// Writes the text to a temporary file in the same folder and renames it when it is complete. Devices and
/// pipes are written to directly. Throws std::runtime_error.
void write_whole(const std::string& path, const std::string& text);

} // namespace loopwise::write
