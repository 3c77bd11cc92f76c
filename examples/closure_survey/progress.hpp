// A bar on a terminal that says how far the work is.
#ifndef CLOSURE_SURVEY_PROGRESS_HPP
#define CLOSURE_SURVEY_PROGRESS_HPP

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

/// Draws on stderr, and only when that is a terminal and the work takes a while.
class Progress {
  public:
    explicit Progress(std::size_t files);
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// To be called before the work on a molecule, by one thread.
    void begin(const std::string& label, std::size_t file, std::size_t steps);
    /// One step is done; any thread may say so.
    void advance();
    /// Takes the bar away, so that something can be printed.
    void clear();

  private:
    void draw(std::size_t done);

    const bool terminal_;
    const std::size_t files_;
    std::size_t file_ = 0;
    std::size_t steps_ = 1;
    std::string label_;
    std::atomic<std::size_t> done_ = 0;
    std::atomic<std::int64_t> next_draw_;
    std::atomic<bool> drawn_ = false;
};

#endif
