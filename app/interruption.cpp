#include "app/interruption.hpp"

#include <atomic>
#include <csignal>
#include <unistd.h>

namespace loopwise::app {
namespace {

std::atomic<int> interrupted = 0;
static_assert(std::atomic<int>::is_always_lock_free); // a signal handler may use it

extern "C" void note(int signal) {
    if (interrupted != 0) std::signal(signal, SIG_DFL), std::raise(signal);
    interrupted = 1;
}

extern "C" void end_now(int) { _exit(exit_interrupted); }

} // namespace

void exit_when_interrupted() {
    std::signal(SIGINT, end_now);
    std::signal(SIGTERM, end_now);
}

void note_interruptions() {
    std::signal(SIGINT, note);
    std::signal(SIGTERM, note);
}

void stop_if_interrupted() {
    if (interrupted != 0) throw Interrupted();
}

} // namespace loopwise::app
