#pragma once

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace vantix {

/// Runs `work(confirm)` in a child process, kills the child once it has confirmed so often, and tells how often it had
/// in all. The work must not return.
template <typename Work>
std::size_t confirmedUntilKilled(std::size_t often, Work work) {
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
    auto confirm = [&] {
        if (::write(ends[1], "!", 1) != 1) ::_exit(1);
    };
    auto readConfirmations = [&](std::size_t most) {
        std::size_t count = 0;
        for (char byte = 0; count < most && ::read(ends[0], &byte, 1) == 1;) ++count;
        return count;
    };
    pid_t child = ::fork();
    if (child == 0) {
        work(confirm);
        ::_exit(1);
    }
    ::close(ends[1]);
    std::size_t confirmed = readConfirmations(often);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    confirmed += readConfirmations(SIZE_MAX);
    ::close(ends[0]);
    return confirmed;
}

}  // namespace vantix
