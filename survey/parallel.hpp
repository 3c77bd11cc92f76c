// Independent pieces of work on several threads.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <future>
#include <vector>

namespace loopwise {

/// Runs body(i, worker) for every i below count, each once, on the calling thread, which is worker 0, and up to
/// threads - 1 more. When one throws, no further piece is begun, and the exception reaches the caller after
/// all have ended.
template <class Body> void in_parallel(std::size_t count, unsigned threads, const Body& body) {
    if (count == 0) return;
    std::atomic<std::size_t> next = 0;
    const auto work = [&](std::size_t worker) {
        try {
            for (std::size_t i = next++; i < count; i = next++) body(i, worker);
        } catch (...) {
            next = count;
            throw;
        }
    };
    const std::size_t others = std::min<std::size_t>(std::max(threads, 1U), count) - 1;
    std::vector<std::future<void>> running;
    for (std::size_t i = 0; i < others; ++i) running.push_back(std::async(std::launch::async, work, i + 1));
    work(0);
    for (std::future<void>& thread : running) thread.get();
}

} // namespace loopwise
