#include "outputs.hpp"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace loopwise {
namespace {

/// What a name or a descriptor leads to, when that is a file that can be destroyed.
struct File {
    dev_t device;
    ino_t inode;
    off_t size;
};

std::optional<File> regular(int failed, const struct stat& state) {
    if (failed != 0 || !S_ISREG(state.st_mode)) return std::nullopt;
    return File{state.st_dev, state.st_ino, state.st_size};
}

std::optional<File> file_at(const std::string& path) {
    struct stat state {};
    const int failed = ::stat(path.c_str(), &state);
    return regular(failed, state);
}

std::optional<File> standard_output() {
    struct stat state {};
    const int failed = ::fstat(STDOUT_FILENO, &state);
    return regular(failed, state);
}

bool are_same(const std::optional<File>& a, const std::optional<File>& b) {
    return a && b && a->device == b->device && a->inode == b->inode;
}

} // namespace

void refuse_harmful_outputs(const std::vector<std::string>& inputs, const std::string& picture,
                            const std::string& table) {
    const std::optional<File> report = standard_output();
    const std::optional<File> drawn = file_at(picture), listed = file_at(table);
    for (const std::string& input : inputs) {
        const std::optional<File> read = file_at(input);
        if (are_same(read, drawn)) throw std::runtime_error(picture + ": is an input, not written over");
        if (are_same(read, listed)) throw std::runtime_error(table + ": is an input, not written over");
        if (are_same(read, report))
            throw std::runtime_error(input + ": is an input and the standard output at once");
    }
    if (are_same(report, drawn)) throw std::runtime_error(picture + ": is the standard output, too");
    if (are_same(report, listed)) throw std::runtime_error(table + ": is the standard output, too");
    if (are_same(drawn, listed) || (!picture.empty() && picture == table))
        throw std::runtime_error(picture + ": is asked for as a picture and as a table");
    const std::string extension = std::filesystem::path(picture).extension().string();
    if (drawn && drawn->size > 0 && extension != ".svg" && extension != ".SVG")
        throw std::runtime_error(picture + ": is there and no .svg file, not written over");
}

} // namespace loopwise
