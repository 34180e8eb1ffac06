#include "platform/linux/end_requests.h"

#include <csignal>
#include <initializer_list>

#include <sys/signalfd.h>
#include <unistd.h>

namespace spellwick {

int WatchEndRequests() {
    sigset_t requests;
    sigemptyset(&requests);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&requests, signal);
    }
    const int descriptor = signalfd(-1, &requests, SFD_NONBLOCK | SFD_CLOEXEC);
    if (descriptor >= 0 && sigprocmask(SIG_BLOCK, &requests, nullptr) != 0) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

}  // namespace spellwick
