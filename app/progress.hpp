// A bar on a terminal that says how far the work is.
#pragma once

#include "survey/survey.hpp"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace loopwise {

/// Draws on stderr, and only when that is a terminal and the work takes a while.
class Progress final : public Watcher {
  public:
    explicit Progress(std::size_t files, std::string unit = "closures");
    ~Progress() override { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// To be called before the work on a molecule, by one thread.
    void begin(const std::string& label, std::size_t file, std::size_t steps);
    void closure_done() override { show(++done_, steps_); }
    /// So many steps are done of those that are known so far. Any thread may say so.
    void show(std::size_t done, std::size_t steps);
    /// Takes the bar away, so that something can be printed.
    void clear();

  private:
    void draw(std::size_t done, std::size_t steps, std::int64_t elapsed_ms);

    const bool terminal_;
    const std::size_t files_;
    const std::string unit_;
    std::size_t file_ = 0;
    std::size_t steps_ = 1;
    std::string label_;
    std::atomic<std::size_t> done_ = 0;
    std::int64_t began_ = 0;
    std::atomic<std::int64_t> next_draw_;
    std::atomic<bool> drawn_ = false;
};

} // namespace loopwise
