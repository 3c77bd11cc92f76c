#include "interruption.hpp"

#include <csignal>

namespace loopwise {
namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void note(int signal) {
    if (interrupted != 0) std::signal(signal, SIG_DFL), std::raise(signal);
    interrupted = 1;
}

} // namespace

void note_interruptions() {
    std::signal(SIGINT, note);
    std::signal(SIGTERM, note);
}

void stop_if_interrupted() {
    if (interrupted != 0) throw Interrupted();
}

} // namespace loopwise
