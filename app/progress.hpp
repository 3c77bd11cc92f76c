// A line on a terminal that says what is being done, how far it is and how long it will take.
#pragma once

#include "survey/survey.hpp"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace loopwise::app {

/// What is known of the work in hand.
struct Work {
    std::string unit, what;
    std::size_t files = 1, file = 1;
    std::size_t closures = 0, done = 0; ///< 0 closures where it is not known how many steps there will be
    double part = 0, largest_part = 0;  ///< of the work, as told last, and the largest told so far
};

/// "[##########          ] 200/400 closures, 12 s, 12 s to go, file 3 of 5: chain A".
std::string progress_line(const Work& work, double seconds);

/// Draws on stderr, and only when that is a terminal and the work takes a while. A thread of its own draws
/// again and again, so that it is seen to be alive while one long step says nothing.
class Progress final : public survey::Watcher {
  public:
    explicit Progress(std::size_t files, std::string unit = "closures");
    ~Progress() override;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// A file is being read, or a picture drawn.
    void begin(const std::string& what, std::size_t file);
    /// A molecule is being surveyed.
    void begin(const std::string& what, std::size_t file, std::size_t closures);
    void closure_at(std::size_t closure, double part) override;
    /// So many steps are done, and so large a part of the work, as far as is known. What is drawn never goes
    /// back. Any thread may say so.
    void show_part(std::size_t done, double part);
    /// Takes the line away, so that something can be printed, until the next step begins.
    void clear();

  private:
    using Clock = std::chrono::steady_clock;
    void draw_again_and_again();
    void reach(double part);

    const bool terminal_;
    std::mutex mutex_; // of all below
    Work work_;
    std::map<std::size_t, double> in_hand_; // closures that are begun, and how far each is
    Clock::time_point begun_;
    bool at_work_ = false, drawn_ = false, over_ = false;
    std::condition_variable changed_;
    std::thread drawer_;
};

} // namespace loopwise::app
