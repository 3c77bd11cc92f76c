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
    std::string line() const;

    const bool terminal_;
    const std::size_t files_;
    const std::string unit_;
    std::mutex mutex_; // of all below
    std::string what_;
    std::size_t file_ = 0, closures_ = 0, done_ = 0;
    std::map<std::size_t, double> in_hand_; // closures that are begun, and how far each is
    double part_ = 0, largest_part_ = 0;    // where steps are of different length: as told, and the bar
    Clock::time_point begun_;
    bool at_work_ = false, drawn_ = false, over_ = false;
    std::condition_variable changed_;
    std::thread drawer_;
};

} // namespace loopwise::app
