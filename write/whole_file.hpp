// Files that are there whole or not at all, and never over what they are made from.
#pragma once

#include <string>
#include <vector>

namespace loopwise::write {

/// A file to write, with the extension that files of its kind have; none where any will do.
struct Output {
    std::string path; ///< empty: not asked for
    const char* extension;
};

/// Throws std::runtime_error with the reason when an output or the standard output is one of the inputs, when two
/// outputs are one file, and when an output would replace a file that is not of its kind by its extension.
void refuse_harmful_outputs(const std::vector<std::string>& inputs, const std::vector<Output>& outputs);

/// Writes the text to a file beside the path and gives it the path's name when all of it is there. What is no
/// regular file, as a device or a pipe, is written to directly. Throws std::runtime_error.
void write_whole(const std::string& path, const std::string& text);

} // namespace loopwise::write
