#include "platform/linux/end_requests.h"

#include <csignal>
#include <initializer_list>

#include <sys/signalfd.h>

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

}  // namespace spellwick
