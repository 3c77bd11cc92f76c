#include "background.hpp"

#include <chrono>
#include <thread>

namespace loopwise {
namespace {

constexpr std::chrono::milliseconds between_looks{25};
constexpr std::chrono::seconds patience_at_exit{2};

struct Abandoned {};

/// How many threads work in the background. Never destroyed: a thread may outlive everything static.
struct Running {
    std::mutex mutex;
    std::condition_variable fewer;
    std::size_t threads = 0;
};
Running& running() {
    static Running* const all = new Running;
    return *all;
}

} // namespace

void Job::look() const {
    if (abandoned_) throw Abandoned();
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
    {
        const std::lock_guard lock(running().mutex);
        ++running().threads;
    }
    const auto body = [job, work = std::move(work)]() mutable {
        std::exception_ptr failure;
        try {
            work(*job);
        } catch (...) {
            failure = std::current_exception();
        }
        work = nullptr;
        {
            const std::lock_guard lock(job->mutex_);
            job->failure_ = std::move(failure);
            job->over_ = true;
            job->ended_.notify_all();
        }
        const std::lock_guard lock(running().mutex);
        --running().threads;
        running().fewer.notify_all();
    };
    try {
        std::thread(body).detach();
    } catch (...) {
        const std::lock_guard lock(running().mutex);
        --running().threads;
        throw;
    }
    try {
        std::size_t told = 0;
        for (bool over = false; !over;) {
            {
                const py::gil_scoped_release others;
                std::unique_lock lock(job->mutex_);
                over = job->ended_.wait_for(lock, between_looks, [&] { return job->over_; });
            }
            if (PyErr_CheckSignals() != 0) throw py::error_already_set();
            if (progress.is_none() || job->done_ == told) continue;
            told = job->done_;
            progress(told, job->planned_.load());
        }
    } catch (...) {
        job->abandoned_ = true;
        throw;
    }
    if (job->failure_) std::rethrow_exception(job->failure_);
}

void Background::wait_at_exit() {
    const py::gil_scoped_release others;
    std::unique_lock lock(running().mutex);
    running().fewer.wait_for(lock, patience_at_exit, [] { return running().threads == 0; });
}

} // namespace loopwise
