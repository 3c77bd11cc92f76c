#include "python/background.hpp"

#include <algorithm>

namespace loopwise::python {
namespace {

constexpr std::chrono::milliseconds between_looks{25};
/// Where others keep the GIL for long, waiting for it takes a tenth of the time at most, as long as that is prompt.
constexpr std::chrono::milliseconds longest_between_looks{50};
constexpr int between_looks_to_wait = 10;

struct Abandoned {};

} // namespace

void Job::look() {
    if (abandoned_ || (is_exiting() && !outlives_exit_)) throw Abandoned();
    if (std::this_thread::get_id() == worker_ && Clock::now() >= next_look_) attend_between_steps();
}

/// Holding the GIL. What is raised ends the work, too.
void Job::attend(const py::object& progress) {
    try {
        if (PyErr_CheckSignals() != 0) throw py::error_already_set();
        if (progress.is_none() || done_ == told_) return;
        told_ = done_;
        const Awaited call;
        progress(told_, planned_.load());
    } catch (...) {
        abandoned_ = true;
        throw;
    }
}

void Job::attend_between_steps() {
    const auto start = Clock::now();
    const Locked python;
    const auto waited = Clock::now() - start;
    attend(*progress_);
    next_look_ = Clock::now() +
                 std::clamp<Clock::duration>(between_looks_to_wait * waited, between_looks, longest_between_looks);
}

void Job::reach(std::size_t done, std::size_t planned) {
    done_ = done;
    planned_ = planned;
    look();
}

void Job::step() {
    ++done_;
    look();
}

void Background::run(std::function<void(Job&)> work, const py::object& progress) {
    const auto job = std::make_shared<Job>();
    auto body = [job, work = std::move(work), awaited = std::make_shared<Awaited>()]() mutable {
        std::exception_ptr failure;
        try {
            work(*job);
        } catch (...) {
            failure = std::current_exception();
        }
        work = nullptr;
        const std::lock_guard lock(job->mutex_);
        job->failure_ = std::move(failure);
        job->over_ = true;
        job->ended_.notify_all();
    };
    std::thread(std::move(body)).detach();
    for (bool over = false; !over;) {
        {
            const Unlocked others;
            std::unique_lock lock(job->mutex_);
            over = job->ended_.wait_for(lock, between_looks, [&] { return job->over_; });
        }
        job->attend(progress);
    }
    if (job->failure_) std::rethrow_exception(job->failure_);
}

void Background::run_here(const std::function<void(Job&)>& work, const py::object& progress) {
    Job job;
    job.worker_ = std::this_thread::get_id();
    job.progress_ = &progress;
    job.next_look_ = Job::Clock::now() + between_looks;
    {
        const Unlocked others;
        work(job);
    }
    job.attend(progress);
}

} // namespace loopwise::python
