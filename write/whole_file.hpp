// Files that are written whole or not at all, and never over an input.
#pragma once

#include <fstream>
#include <string>
#include <vector>

namespace loopwise::write {

/// A file to write, and the extension that it must have to be overwritten; empty: any.
struct Output {
    std::string path; ///< empty: no such output
    const char* extension;
};

/// Throws std::runtime_error with the reason if an output or the standard output is an input, if two outputs
/// are one file, if an output is "-", or if an output would replace a file with another extension.
void refuse_harmful_outputs(const std::vector<std::string>& inputs, const std::vector<Output>& outputs);

/// A file that is complete or is not there. The text goes to a temporary file of a unique name in the same folder.
/// commit() renames it; without commit() nothing is left. Devices and pipes are written to directly.
class WholeFile {
  public:
    /// Throws std::runtime_error, as commit() does.
    explicit WholeFile(const std::string& path);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    std::ostream& stream() { return file_; }
    void commit();

  private:
    std::string target_, partial_; ///< no partial file of a device
    std::ofstream file_;
};

/// Writes a WholeFile.
void write_whole(const std::string& path, const std::string& text);

} // namespace loopwise::write
