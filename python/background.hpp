// Work without the GIL that Python can interrupt. A thread of its own does it, while the caller's looks for signals and
// tells how far it is; or the caller's does, and looks between two steps.
#pragma once

#include "python/lock.hpp"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace loopwise::python {

/// What the work and its caller share.
class Job {
  public:
    using Clock = std::chrono::steady_clock;

    void plan(std::size_t steps) { planned_ = steps; }
    /// For the work to call after each step, from any thread. Throws when nobody waits for it any more.
    void step();
    /// The same for work that counts its steps itself.
    void reach(std::size_t done, std::size_t planned);
    void look();

  private:
    friend class Background;
    void attend(const py::object& progress);
    void attend_between_steps();

    const bool outlives_exit_ = is_exiting();
    std::atomic<bool> abandoned_ = false;
    std::atomic<std::size_t> done_ = 0, planned_ = 0;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool over_ = false;
    std::exception_ptr failure_;
    std::size_t told_ = 0;

    std::thread::id worker_; ///< the caller's thread, where it does the work
    const py::object* progress_ = nullptr;
    Clock::time_point next_look_;
};

class Background {
  public:
    /// Runs the work, which may hold no Python object: an interrupted call returns at once and leaves it to end by
    /// itself. Calls progress(done, planned) from the caller's thread unless it is None. What the work throws, what
    /// progress raises and KeyboardInterrupt reach the caller.
    static void run(std::function<void(Job&)> work, const py::object& progress);

    /// The same on the caller's thread, which saves a thread and the way to a processor whose cache knows nothing of
    /// the work. For short steps: what interrupts it waits for one to end. Other threads may help, which end with it.
    static void run_here(const std::function<void(Job&)>& work, const py::object& progress);
};

/// The result of work(job) in the background.
template <class Result, class Work> Result in_background(Work work, const py::object& progress = py::none()) {
    const auto result = std::make_shared<std::optional<Result>>();
    Background::run([result, work = std::move(work)](Job& job) mutable { *result = work(job); }, progress);
    return std::move(**result);
}

/// The result of work(job) on the caller's thread.
template <class Result, class Work> Result in_steps(const Work& work, const py::object& progress) {
    std::optional<Result> result;
    Background::run_here([&](Job& job) { result = work(job); }, progress);
    return *std::move(result);
}

} // namespace loopwise::python
