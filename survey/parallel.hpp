// Loops over several threads.
#pragma once

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <future>
#include <mutex>
#include <vector>

namespace loopwise::survey {

/// Runs work(worker) on the calling thread, which is worker 0, and on threads - 1 more, or as many as can be
/// started. The exception of a worker reaches the caller after all have ended.
template <class Work> void on_threads(std::size_t threads, const Work& work) {
    std::vector<std::future<void>> running;
    try {
        while (running.size() + 1 < threads)
            running.push_back(std::async(std::launch::async, work, running.size() + 1));
    } catch (const std::exception&) {
        // Fewer threads do the same work.
    }
    work(0);
    for (std::future<void>& thread : running) thread.get();
}

/// Runs body(i, worker) for every i below count, each once, on up to `threads` threads; the calling one is worker 0.
/// After an exception no further index is begun, and the exception reaches the caller after all workers have ended.
template <class Body> void in_parallel(std::size_t count, unsigned threads, const Body& body) {
    if (count == 0) return;
    std::atomic<std::size_t> next = 0;
    on_threads(std::min<std::size_t>(std::max(threads, 1U), count), [&](std::size_t worker) {
        try {
            for (std::size_t i = next++; i < count; i = next++) body(i, worker);
        } catch (...) {
            next = count;
            throw;
        }
    });
}

/// Indices from `first` up to `end`, without it.
struct IndexRange {
    std::size_t first = 0, end = 0;
    bool empty() const { return first == end; }
};

/// Ordered queue: produced in any order by several threads, consumed by index by one. It holds fewer indices than it
/// has slots; index i has the slot i % slots.
class OrderedQueue {
  public:
    OrderedQueue(std::size_t count, std::size_t slots, std::size_t threads)
        : count_(count), slots_(slots), threads_(threads), is_produced_(slots) {}

    /// Indices to produce. Waits for free slots; empty when no index is left.
    IndexRange wait_to_produce() {
        std::unique_lock lock(mutex_);
        slot_freed_.wait(lock, [this] { return next_ == count_ || has_free_slot(); });
        return claim();
    }

    void produced(const IndexRange& range) {
        const std::lock_guard lock(mutex_);
        for (std::size_t i = range.first; i < range.end; ++i) is_produced_[i % slots_] = true;
        if (range.first == consumed_) first_produced_.notify_one();
    }

    /// What the consumer does next; it produces while there is nothing to consume. Both are empty when all indices are
    /// consumed or the queue has stopped.
    struct Step {
        IndexRange consume, produce;
        bool is_last() const { return consume.empty() && produce.empty(); }
    };
    Step wait_to_consume() {
        std::unique_lock lock(mutex_);
        first_produced_.wait(lock, [this] {
            return stopped_ || is_produced_[consumed_ % slots_] || has_free_slot() || consumed_ == count_;
        });
        Step step;
        if (stopped_ || consumed_ == count_) return step;
        std::size_t end = consumed_;
        while (end < next_ && end < consumed_ + slots_ && is_produced_[end % slots_]) ++end;
        step.consume = {consumed_, end};
        if (step.consume.empty()) step.produce = claim();
        return step;
    }

    void consumed(const IndexRange& range) {
        const std::lock_guard lock(mutex_);
        for (std::size_t i = range.first; i < range.end; ++i) is_produced_[i % slots_] = false;
        consumed_ = range.end;
        slot_freed_.notify_all();
    }

    /// No further index is produced or consumed.
    void stop() {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        next_ = count_;
        slot_freed_.notify_all();
        first_produced_.notify_all();
    }

  private:
    /// Several indices are claimed at once, so that threads seldom wait for each other; at the end one by one.
    static constexpr std::size_t most_at_once = 8, rounds = 4;

    bool has_free_slot() const { return next_ < std::min(count_, consumed_ + slots_); }
    IndexRange claim() {
        if (!has_free_slot()) return {};
        const std::size_t share = std::min(count_ - next_, slots_) / (rounds * threads_);
        const std::size_t end = next_ + std::clamp<std::size_t>(share, 1, most_at_once);
        const IndexRange range{next_, std::min({end, count_, consumed_ + slots_})};
        next_ = range.end;
        return range;
    }

    const std::size_t count_, slots_, threads_;
    std::mutex mutex_;
    std::condition_variable slot_freed_, first_produced_;
    std::vector<char> is_produced_; ///< by slot
    std::size_t next_ = 0;          ///< the first index that nobody has claimed
    std::size_t consumed_ = 0;      ///< the first index that is not consumed
    bool stopped_ = false;
};

/// Runs produce(i, slot, worker) for every i below count on up to `threads` threads. The calling thread, worker 0, runs
/// consume(i, slot) after it in the order of i. At most `slots` indices are produced and not yet consumed, each in a
/// slot of its own. After an exception nothing further is begun, and the exception reaches the caller after all
/// workers have ended.
template <class Produce, class Consume>
void produce_and_consume(std::size_t count, unsigned threads, std::size_t slots, const Produce& produce,
                         const Consume& consume) {
    if (count == 0) return;
    const std::size_t workers = std::min<std::size_t>(std::max(threads, 1U), count);
    OrderedQueue queue(count, slots, workers);
    const auto produce_all = [&](const IndexRange& range, std::size_t worker) {
        for (std::size_t i = range.first; i < range.end; ++i) produce(i, i % slots, worker);
        queue.produced(range);
    };
    on_threads(workers, [&](std::size_t worker) {
        try {
            if (worker > 0) {
                for (auto range = queue.wait_to_produce(); !range.empty(); range = queue.wait_to_produce())
                    produce_all(range, worker);
                return;
            }
            for (auto step = queue.wait_to_consume(); !step.is_last(); step = queue.wait_to_consume()) {
                if (!step.produce.empty()) produce_all(step.produce, worker);
                for (std::size_t i = step.consume.first; i < step.consume.end; ++i) consume(i, i % slots);
                if (!step.consume.empty()) queue.consumed(step.consume);
            }
        } catch (...) {
            queue.stop();
            throw;
        }
    });
}

} // namespace loopwise::survey
