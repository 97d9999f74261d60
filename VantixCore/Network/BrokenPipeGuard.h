#pragma once

#include <csignal>

namespace vantix {

/// Keeps SIGPIPE away from the calling thread while it lives: a connection that the other side has closed must not end
/// the process, and the process's own handling of the signal stays as it is.
class BrokenPipeGuard {
public:
    BrokenPipeGuard() {
        sigemptyset(&signals_);
        sigaddset(&signals_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &signals_, &before_);
    }
    ~BrokenPipeGuard() {
        const timespec atOnce{};
        if (sigismember(&before_, SIGPIPE) == 0) sigtimedwait(&signals_, nullptr, &atOnce);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

private:
    sigset_t signals_;
    sigset_t before_;
};

}  // namespace vantix
