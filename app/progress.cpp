#include "app/progress.hpp"

#include "words/text.hpp"

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

std::string progress_line(const Work& work, double seconds) {
    const std::string place =
        work.files > 1 ? ", file " + std::to_string(work.file) + " of " + std::to_string(work.files) : "";
    const std::string what = shortened(words::printable(work.what));
    if (work.closures == 0 && work.largest_part == 0) return what + place + ": " + duration(seconds);
    const std::string bar(static_cast<std::size_t>(static_cast<double>(bar_width) * work.largest_part), '#');
    std::string text = "[";
    text.append(words::left(bar, bar_width)).append("] ").append(std::to_string(work.done));
    if (work.closures > 0) text.append("/").append(std::to_string(work.closures));
    text.append(" ").append(work.unit).append(", ").append(duration(seconds));
    if (work.part > 0.0) text.append(", ").append(duration(seconds * (1.0 - work.part) / work.part)).append(" to go");
    return text + place + ": " + what;
}

Progress::Progress(std::size_t files, std::string unit)
    : terminal_(isatty(STDERR_FILENO) != 0), work_{.unit = std::move(unit), .what = {}, .files = files} {
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
    work_ = {.unit = work_.unit, .what = what, .files = work_.files, .file = file, .closures = closures};
    in_hand_.clear();
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
        ++work_.done;
    }
    double done = static_cast<double>(work_.done);
    for (const auto& [begun, of_it] : in_hand_) done += of_it;
    reach(done / static_cast<double>(work_.closures));
}

void Progress::show_part(std::size_t done, double part) {
    if (!terminal_) return;
    const std::lock_guard lock(mutex_);
    work_.done = std::max(work_.done, done); // threads may tell in another order
    reach(part);
}

void Progress::reach(double part) {
    work_.part = std::min(part, 1.0);
    work_.largest_part = std::max(work_.largest_part, work_.part);
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
        const std::string line = progress_line(work_, std::chrono::duration<double>(Clock::now() - begun_).count());
        std::fprintf(stderr, "\r\033[K%s", line.substr(0, width_of_terminal() - 1).c_str());
        std::fflush(stderr);
        drawn_ = true;
    }
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
