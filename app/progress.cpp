#include "app/progress.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace loopwise::app {
namespace {

using namespace std::chrono_literals;
constexpr auto quiet_at_first = 400ms, between_draws = 200ms;
constexpr std::size_t bar_width = 20, label_width = 30, usual_width = 80;

std::string shortened(const std::string& label) {
    return label.size() > label_width ? "..." + label.substr(label.size() - label_width + 3) : label;
}

std::string duration(double seconds) {
    const auto whole = static_cast<long long>(std::ceil(seconds));
    if (whole < 100) return std::to_string(whole) + " s";
    if (whole < 100 * 60) return std::to_string((whole + 59) / 60) + " min";
    return std::to_string((whole + 3599) / 3600) + " h";
}

/// A line that wraps could not be taken away again.
std::size_t width_of_terminal() {
    winsize size{};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return usual_width;
    return size.ws_col;
}

} // namespace

Progress::Progress(std::size_t files, std::string unit)
    : terminal_(isatty(STDERR_FILENO) != 0), files_(files), unit_(std::move(unit)) {
    if (terminal_) drawer_ = std::thread([this] { draw_again_and_again(); });
}

Progress::~Progress() {
    clear();
    {
        const std::lock_guard lock(mutex_);
        over_ = true;
    }
    changed_.notify_all();
    if (drawer_.joinable()) drawer_.join();
}

void Progress::begin(const std::string& what, std::size_t file) { begin(what, file, 0); }

void Progress::begin(const std::string& what, std::size_t file, std::size_t closures) {
    const std::lock_guard lock(mutex_);
    what_ = shortened(what);
    file_ = file;
    closures_ = closures;
    done_ = 0;
    in_hand_.clear();
    part_ = largest_part_ = 0;
    begun_ = Clock::now();
    at_work_ = true;
}

void Progress::closure_at(std::size_t closure, double part) {
    if (!terminal_) return;
    const std::lock_guard lock(mutex_);
    if (part < 1.0) {
        in_hand_[closure] = part;
    } else {
        in_hand_.erase(closure);
        ++done_;
    }
}

void Progress::show_part(std::size_t done, double part) {
    if (!terminal_) return;
    const std::lock_guard lock(mutex_);
    done_ = std::max(done_, done); // threads may tell in another order
    part_ = std::min(part, 1.0);
    largest_part_ = std::max(largest_part_, part_);
}

/// Many short steps are seen to be alive, too: the quiet at first is that of the whole run.
void Progress::draw_again_and_again() {
    std::unique_lock lock(mutex_);
    auto due = Clock::now() + quiet_at_first;
    while (!over_) {
        changed_.wait_until(lock, due);
        if (over_ || Clock::now() < due) continue;
        due = Clock::now() + between_draws;
        if (!at_work_) continue;
        std::fprintf(stderr, "\r\033[K%s", line().substr(0, width_of_terminal() - 1).c_str());
        std::fflush(stderr);
        drawn_ = true;
    }
}

std::string Progress::line() const {
    const double elapsed = std::chrono::duration<double>(Clock::now() - begun_).count();
    const std::string place =
        files_ > 1 ? ", file " + std::to_string(file_) + " of " + std::to_string(files_) : "";
    if (closures_ == 0 && largest_part_ == 0) return what_ + place + ": " + duration(elapsed);
    double part = part_, bar = largest_part_;
    if (closures_ > 0) {
        double done = static_cast<double>(done_);
        for (const auto& [closure, of_it] : in_hand_) done += of_it;
        part = bar = std::min(1.0, done / static_cast<double>(closures_));
    }
    const std::string filled(static_cast<std::size_t>(static_cast<double>(bar_width) * bar), '#');
    std::string text = "[";
    text.append(filled).append(bar_width - filled.size(), ' ').append("] ").append(std::to_string(done_));
    if (closures_ > 0) text.append("/").append(std::to_string(closures_));
    text += " " + unit_ + ", " + duration(elapsed);
    if (part > 0.0) text += ", " + duration(elapsed * (1.0 - part) / part) + " to go";
    return text + place + ": " + what_;
}

void Progress::clear() {
    const std::lock_guard lock(mutex_);
    at_work_ = false;
    if (std::exchange(drawn_, false)) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
    }
}

} // namespace loopwise::app
