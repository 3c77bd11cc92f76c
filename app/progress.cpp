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

Progress::Progress(std::size_t files, std::string unit)
    : terminal_(isatty(STDERR_FILENO) != 0), files_(files), unit_(std::move(unit)),
      next_draw_(now_ms() + quiet_at_first_ms) {}

void Progress::begin(const std::string& label, std::size_t file, std::size_t steps) {
    label_ = label.size() > label_width ? "..." + label.substr(label.size() - label_width + 3) : label;
    file_ = file;
    steps_ = std::max<std::size_t>(steps, 1);
    done_ = 0;
    began_ = now_ms();
}

void Progress::show(std::size_t done, std::size_t steps) {
    if (!terminal_) return;
    const std::int64_t now = now_ms();
    std::int64_t due = next_draw_;
    if (now >= due && next_draw_.compare_exchange_strong(due, now + between_draws_ms))
        draw(done, steps, now - began_);
}

void Progress::draw(std::size_t done, std::size_t steps, std::int64_t elapsed_ms) {
    const std::string filled(bar_width * done / steps, '#');
    const double left_s = 1e-3 * static_cast<double>(elapsed_ms) * static_cast<double>(steps - done) /
                          static_cast<double>(done);
    std::fprintf(stderr, "\r\033[K[%-*s] %zu/%zu %s, %.0f s left, file %zu of %zu: %s",
                 static_cast<int>(bar_width), filled.c_str(), done, steps, unit_.c_str(), left_s, file_,
                 files_, label_.c_str());
    drawn_ = true;
}

void Progress::clear() {
    if (drawn_.exchange(false)) std::fputs("\r\033[K", stderr);
}

} // namespace loopwise
