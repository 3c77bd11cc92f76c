#include "progress.hpp"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <unistd.h>

namespace loopwise {
namespace {

constexpr std::int64_t quiet_at_first_ms = 500;
constexpr std::int64_t between_draws_ms = 100;
constexpr std::size_t bar_width = 30;
constexpr std::size_t label_width = 30;

std::int64_t now_ms() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

Progress::Progress(std::size_t files)
    : terminal_(isatty(STDERR_FILENO) != 0), files_(files), next_draw_(now_ms() + quiet_at_first_ms) {}

void Progress::begin(const std::string& label, std::size_t file, std::size_t steps) {
    label_ = label.size() > label_width ? "..." + label.substr(label.size() - label_width + 3) : label;
    file_ = file;
    steps_ = std::max<std::size_t>(steps, 1);
    done_ = 0;
}

void Progress::closure_done() {
    const std::size_t done = ++done_;
    if (!terminal_) return;
    const std::int64_t now = now_ms();
    std::int64_t due = next_draw_;
    if (now >= due && next_draw_.compare_exchange_strong(due, now + between_draws_ms)) draw(done);
}

void Progress::draw(std::size_t done) {
    const std::string filled(bar_width * done / steps_, '#');
    std::fprintf(stderr, "\r\033[K[%-*s] %zu/%zu closures, file %zu of %zu: %s", static_cast<int>(bar_width),
                 filled.c_str(), done, steps_, file_, files_, label_.c_str());
    drawn_ = true;
}

void Progress::clear() {
    if (drawn_.exchange(false)) std::fputs("\r\033[K", stderr);
}

} // namespace loopwise
