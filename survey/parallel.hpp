// Independent pieces of work on several threads.
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
/// started. What one of them throws reaches the caller after all have ended.
template <class Work> void on_threads(std::size_t threads, const Work& work) {
    std::vector<std::future<void>> running;
    try {
        while (running.size() + 1 < threads)
            running.push_back(std::async(std::launch::async, work, running.size() + 1));
    } catch (const std::exception&) {
        // The work is for any number of threads.
    }
    work(0);
    for (std::future<void>& thread : running) thread.get();
}

/// Runs body(i, worker) for every i below count, each once, on up to so many threads, of which the calling one is
/// worker 0. When one throws, no further piece is begun, and the exception reaches the caller after all have ended.
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

/// Pieces that threads make in any order and one thread takes in theirs. Fewer are made and not yet taken than there
/// are places; piece i has the place i % places.
class OrderedQueue {
  public:
    struct Pieces {
        std::size_t first = 0, end = 0;
        bool none() const { return first == end; }
    };

    OrderedQueue(std::size_t count, std::size_t places, std::size_t threads)
        : count_(count), places_(places), threads_(threads), made_(places) {}

    /// Pieces to make. Waits for free places; none when no more are to be made.
    Pieces begin() {
        std::unique_lock lock(mutex_);
        freed_.wait(lock, [this] { return next_ == count_ || has_place(); });
        return claim();
    }

    void finish(const Pieces& pieces) {
        const std::lock_guard lock(mutex_);
        for (std::size_t i = pieces.first; i < pieces.end; ++i) made_[i % places_] = true;
        if (pieces.first == taken_) finished_.notify_one();
    }

    /// What the thread that takes does next.
    struct Turn {
        Pieces take, make; ///< both none when all are taken or the line has stopped
    };
    Turn turn() {
        std::unique_lock lock(mutex_);
        finished_.wait(
            lock, [this] { return stopped_ || made_[taken_ % places_] || has_place() || taken_ == count_; });
        Turn turn;
        if (stopped_ || taken_ == count_) return turn;
        turn.take = {taken_, taken_};
        while (turn.take.end < next_ && turn.take.end < taken_ + places_ && made_[turn.take.end % places_])
            ++turn.take.end;
        if (turn.take.none()) turn.make = claim();
        return turn;
    }

    void take(const Pieces& pieces) {
        const std::lock_guard lock(mutex_);
        for (std::size_t i = pieces.first; i < pieces.end; ++i) made_[i % places_] = false;
        taken_ = pieces.end;
        freed_.notify_all();
    }

    /// No further piece is begun or taken.
    void stop() {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        next_ = count_;
        freed_.notify_all();
        finished_.notify_all();
    }

  private:
    /// Pieces are given out several at once, so that threads seldom meet here, but at the end one by one.
    static constexpr std::size_t most_at_once = 8, rounds = 4;

    bool has_place() const { return next_ < std::min(count_, taken_ + places_); }
    Pieces claim() {
        if (!has_place()) return {};
        const std::size_t share = std::min(count_ - next_, places_) / (rounds * threads_);
        const std::size_t end = next_ + std::clamp<std::size_t>(share, 1, most_at_once);
        const Pieces pieces{next_, std::min({end, count_, taken_ + places_})};
        next_ = pieces.end;
        return pieces;
    }

    const std::size_t count_, places_, threads_;
    std::mutex mutex_;
    std::condition_variable freed_, finished_;
    std::vector<char> made_; ///< in which places
    std::size_t next_ = 0;   ///< all before it are begun
    std::size_t taken_ = 0;  ///< all before it are taken
    bool stopped_ = false;
};

/// Runs make(i, place, worker) for every i below count, on up to so many threads, and take(i, place) after it, on the
/// calling thread alone, which is worker 0, in the order of i. At most `places` pieces are made and not yet taken, each
/// in a place of its own. When one throws, nothing further is begun, and the exception reaches the caller after
/// all have ended.
template <class Make, class Take>
void in_parallel_and_in_order(std::size_t count, unsigned threads, std::size_t places, const Make& make,
                              const Take& take) {
    if (count == 0) return;
    const std::size_t workers = std::min<std::size_t>(std::max(threads, 1U), count);
    OrderedQueue queue(count, places, workers);
    const auto make_all = [&](const OrderedQueue::Pieces& pieces, std::size_t worker) {
        for (std::size_t i = pieces.first; i < pieces.end; ++i) make(i, i % places, worker);
        queue.finish(pieces);
    };
    on_threads(workers, [&](std::size_t worker) {
        try {
            if (worker > 0) {
                for (auto pieces = queue.begin(); !pieces.none(); pieces = queue.begin())
                    make_all(pieces, worker);
                return;
            }
            for (auto turn = queue.turn(); !turn.take.none() || !turn.make.none(); turn = queue.turn()) {
                if (!turn.make.none()) make_all(turn.make, worker);
                for (std::size_t i = turn.take.first; i < turn.take.end; ++i) take(i, i % places);
                if (!turn.take.none()) queue.take(turn.take);
            }
        } catch (...) {
            queue.stop();
            throw;
        }
    });
}

} // namespace loopwise::survey
