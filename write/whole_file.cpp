#include "write/whole_file.hpp"

#include "words/text.hpp"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace loopwise::write {
namespace {

/// A regular file, which could be overwritten.
struct File {
    dev_t device;
    ino_t inode;
    off_t size;
};

template <class Query> std::optional<File> regular_file(const Query& query) {
    struct stat state {};
    if (query(&state) != 0 || !S_ISREG(state.st_mode)) return std::nullopt;
    return File{state.st_dev, state.st_ino, state.st_size};
}

std::optional<File> file_at(const std::string& path) {
    return regular_file([&](struct stat* state) { return ::stat(path.c_str(), state); });
}

std::optional<File> file_of(int descriptor) {
    return regular_file([=](struct stat* state) { return ::fstat(descriptor, state); });
}

bool are_same(const std::optional<File>& a, const std::optional<File>& b) {
    return a && b && a->device == b->device && a->inode == b->inode;
}

/// Paths of files that do not exist yet are compared by name.
bool are_one(const std::string& a, const std::string& b) {
    // A relative path without a folder that exists would stay as it is.
    const auto spelled_out = [](const std::string& path) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(path));
    };
    return spelled_out(a) == spelled_out(b) || are_same(file_at(a), file_at(b));
}

[[noreturn]] void refuse_writing() { throw std::runtime_error("cannot be written"); }

} // namespace

WholeFile::WholeFile(const std::string& path) : target_(path) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status) || fs::is_regular_file(status)) {
        // A link stays: its target is replaced.
        if (fs::exists(status)) target_ = fs::canonical(path, error).string();
        partial_ = target_ + ".XXXXXX";
        const int descriptor = ::mkstemp(partial_.data());
        if (descriptor < 0) refuse_writing();
        constexpr mode_t as_usual = 0666;
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(descriptor, as_usual & ~mask);
        ::close(descriptor);
    }
    file_.open(partial_.empty() ? target_ : partial_, std::ios::binary);
    if (!file_) refuse_writing();
}

WholeFile::~WholeFile() {
    std::error_code error;
    if (!partial_.empty()) std::filesystem::remove(partial_, error);
}

void WholeFile::commit() {
    file_.close();
    if (!file_) refuse_writing();
    if (partial_.empty()) return;
    std::error_code error;
    std::filesystem::rename(partial_, target_, error);
    if (error) refuse_writing();
    partial_.clear();
}

void write_whole(const std::string& path, const std::string& text) {
    WholeFile file(path);
    file.stream() << text;
    file.commit();
}

void refuse_harmful_outputs(const std::vector<std::string>& inputs, const std::vector<Output>& outputs) {
    const std::optional<File> report = file_of(STDOUT_FILENO);
    for (const std::string& input : inputs)
        if (are_same(file_at(input), report))
            throw std::runtime_error(input + ": is both an input and the standard output");
    for (auto output = outputs.begin(); output != outputs.end(); ++output) {
        const auto& [path, extension] = *output;
        if (path.empty()) continue;
        if (path == words::standard_output)
            throw std::runtime_error("-: the report goes to the standard output; choose a file");
        const std::optional<File> file = file_at(path);
        for (const std::string& input : inputs)
            if (are_same(input == words::standard_input ? file_of(STDIN_FILENO) : file_at(input), file))
                throw std::runtime_error(path + ": is an input; not overwritten");
        if (are_same(report, file))
            throw std::runtime_error(path + ": is also the standard output; choose another file");
        for (auto other = outputs.begin(); other != output; ++other)
            if (!other->path.empty() && are_one(path, other->path))
                throw std::runtime_error(path + ": is given for two outputs; choose another file");
        if (file && file->size > 0 && *extension != 0 && words::extension_of(path) != extension)
            throw std::runtime_error(path + ": exists, and its extension is not " + extension + "; not overwritten");
    }
}

} // namespace loopwise::write
