#include "output/Interrupt.h"

#include <atomic>
#include <csignal>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<bool> g_interrupted = false;
std::atomic<int> g_watches = 0;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void OnSignal(int) {
    g_interrupted = true;
}

// A signal that the parent process ignores, as nohup does, stays ignored.
void Handle(void (*handler)(int)) {
    for (const int signal : kSignals) {
        struct sigaction action = {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            action.sa_handler = handler;
            action.sa_flags = SA_RESTART;
            sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace

InterruptWatch::InterruptWatch() {
    if (g_watches++ == 0) {
        Handle(OnSignal);
    }
}

InterruptWatch::~InterruptWatch() {
    if (--g_watches == 0) {
        Handle(SIG_DFL);
    }
}

bool InterruptWatch::IsInterrupted() {
    return g_interrupted;
}
