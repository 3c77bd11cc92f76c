// Work that Python can interrupt: a thread of its own does it without the GIL, while the caller's looks for signals and
// tells how far it is.
#pragma once

#include "arrays.hpp"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>

namespace loopwise {

/// What the two threads share.
class Job {
  public:
    void plan(std::size_t steps) { planned_ = steps; }
    /// For the work to call after each step, from any thread. Throws when nobody waits for it any more.
    void step();
    /// The same for work that counts its steps itself.
    void reach(std::size_t done, std::size_t planned);
    void look() const;

  private:
    friend class Background;
    std::atomic<bool> abandoned_ = false;
    std::atomic<std::size_t> done_ = 0, planned_ = 0;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool over_ = false;
    std::exception_ptr failure_;
};

class Background {
  public:
    /// Runs the work, which may hold no Python object: an interrupted call returns at once and leaves it to end by
    /// itself. Calls progress(done, planned) from the caller's thread unless it is None. What the work throws, what
    /// progress raises and KeyboardInterrupt reach the caller.
    static void run(std::function<void(Job&)> work, const py::object& progress);

    /// Gives interrupted work a moment to end, before the process takes its ground away.
    static void wait_at_exit();
};

/// The result of work(job) in the background.
template <class Result, class Work> Result in_background(Work work, const py::object& progress = py::none()) {
    const auto result = std::make_shared<std::optional<Result>>();
    Background::run([result, work = std::move(work)](Job& job) mutable { *result = work(job); }, progress);
    return std::move(**result);
}

} // namespace loopwise
