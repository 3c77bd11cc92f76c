#include "write/whole_file.hpp"

#include "read/bytes.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace loopwise::write {
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

std::optional<File> standard_input_file() {
    struct stat state {};
    const int failed = ::fstat(STDIN_FILENO, &state);
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

/// Files that are not there yet are one file when their names lead to one place.
bool are_one(const std::string& a, const std::string& b) {
    return std::filesystem::weakly_canonical(a) == std::filesystem::weakly_canonical(b) ||
           are_same(file_at(a), file_at(b));
}

bool has_extension(const std::string& path, const char* extension) {
    std::string own = std::filesystem::path(path).extension().string();
    std::transform(own.begin(), own.end(), own.begin(), [](unsigned char c) { return std::tolower(c); });
    return own == extension;
}

[[noreturn]] void refuse_writing() { throw std::runtime_error("cannot be written"); }

void write(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) refuse_writing();
}

} // namespace

void write_whole(const std::string& path, const std::string& text) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) return write(path, text);
    // Written through a link, not in its place; under a name that nobody else has.
    const fs::path target = fs::exists(status) ? fs::canonical(path, error) : fs::path(path);
    std::string partial = target.string() + ".XXXXXX";
    const int descriptor = ::mkstemp(partial.data());
    if (descriptor < 0) refuse_writing();
    constexpr mode_t as_usual = 0666;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(descriptor, as_usual & ~mask);
    ::close(descriptor);
    try {
        write(partial, text);
        fs::rename(partial, target, error);
        if (error) refuse_writing();
    } catch (...) {
        fs::remove(partial, error);
        throw;
    }
}

void refuse_harmful_outputs(const std::vector<std::string>& inputs, const std::vector<Output>& outputs) {
    const std::optional<File> report = standard_output();
    for (const std::string& input : inputs)
        if (are_same(file_at(input), report))
            throw std::runtime_error(input + ": is an input and the standard output at once");
    for (auto output = outputs.begin(); output != outputs.end(); ++output) {
        const auto& [path, extension] = *output;
        if (path.empty()) continue;
        const std::optional<File> file = file_at(path);
        for (const std::string& input : inputs)
            if (are_same(input == read::standard_input ? standard_input_file() : file_at(input), file))
                throw std::runtime_error(path + ": is an input, not written over");
        if (are_same(report, file)) throw std::runtime_error(path + ": is the standard output, too");
        for (auto other = outputs.begin(); other != output; ++other)
            if (!other->path.empty() && are_one(path, other->path))
                throw std::runtime_error(path + ": is asked for twice");
        if (file && file->size > 0 && *extension != 0 && !has_extension(path, extension))
            throw std::runtime_error(path + ": is there and no " + extension + " file, not written over");
    }
}

} // namespace loopwise::write
