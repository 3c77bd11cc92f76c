#include "output.hpp"

#include <csignal>
#include <filesystem>
#include <fstream>

namespace loopwise {
namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void note(int signal) {
    if (interrupted != 0) std::signal(signal, SIG_DFL), std::raise(signal);
    interrupted = 1;
}

[[noreturn]] void refuse() { throw std::runtime_error("cannot be written"); }

void write(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) refuse();
}

} // namespace

void write_whole(const std::string& path, const std::string& text) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) return write(path, text);
    const std::string partial = path + ".partial";
    try {
        write(partial, text);
        fs::rename(partial, path, error);
        if (error) refuse();
    } catch (...) {
        fs::remove(partial, error);
        throw;
    }
}

void note_interruptions() {
    std::signal(SIGINT, note);
    std::signal(SIGTERM, note);
}

void stop_if_interrupted() {
    if (interrupted != 0) throw Interrupted();
}

} // namespace loopwise
