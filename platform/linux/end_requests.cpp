#include "platform/linux/end_requests.h"

#include <csignal>
#include <initializer_list>

#include <sys/signalfd.h>
#include <unistd.h>

namespace spellwick {

namespace {

sigset_t EndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    return signals;
}

}  // namespace

void HoldEndSignals() {
    const sigset_t signals = EndSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
}

int WatchEndRequests() {
    const sigset_t signals = EndSignals();
    const int descriptor = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
    if (descriptor < 0) {
        sigprocmask(SIG_UNBLOCK, &signals, nullptr);
    }
    return descriptor;
}

void TakeEndSignal(int descriptor) {
    signalfd_siginfo taken{};
    // Taken or not, the next one is to get through.
    static_cast<void>(read(descriptor, &taken, sizeof taken));
    const sigset_t signals = EndSignals();
    sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace spellwick
