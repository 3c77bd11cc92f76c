#include "python/lock.hpp"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <thread>

namespace loopwise::python {
namespace {

constexpr std::chrono::seconds patience_at_exit{2};

struct Gate {
    std::mutex mutex;
    std::condition_variable fewer, never;
    std::size_t awaited = 0;
    std::optional<std::thread::id> exiting; ///< the thread that exits
};

Gate* only_gate = nullptr;
std::atomic<bool> exits = false; // the same for a look without a lock

/// Never destroyed, as a thread may outlive everything static. A forked process has no other threads and a new gate.
Gate& gate() {
    static const bool made = [] {
        const auto renew = [] { only_gate = new Gate; };
        renew();
        return pthread_atfork(nullptr, nullptr, renew) == 0;
    }();
    static_cast<void>(made);
    return *only_gate;
}

/// On the way to the lock.
void pass() {
    std::unique_lock lock(gate().mutex);
    while (gate().exiting && *gate().exiting != std::this_thread::get_id()) gate().never.wait(lock);
    ++gate().awaited;
}

void leave() {
    const std::lock_guard lock(gate().mutex);
    --gate().awaited;
    gate().fewer.notify_all();
}

} // namespace

Awaited::Awaited() {
    const std::lock_guard lock(gate().mutex);
    ++gate().awaited;
}
Awaited::~Awaited() { leave(); }

Unlocked::~Unlocked() {
    pass();
    PyEval_RestoreThread(state_);
    leave();
}

Locked::Locked() {
    pass();
    state_ = PyGILState_Ensure();
}
Locked::~Locked() {
    PyGILState_Release(state_);
    leave();
}

bool is_exiting() { return exits; }

void begin_exit() {
    const Unlocked others;
    std::unique_lock lock(gate().mutex);
    gate().exiting = std::this_thread::get_id();
    exits = true;
    gate().fewer.wait_for(lock, patience_at_exit, [] { return gate().awaited == 0; });
}

} // namespace loopwise::python
