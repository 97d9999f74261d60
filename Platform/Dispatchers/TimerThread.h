#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Values/Export.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <thread>

namespace vantix {

/// Waits for the earliest of the delayed works on a thread of its own, which starts with the first of them. Usable from
/// any thread.
class VANTIX_EXPORT TimerThread {
public:
    /// Calls `fire` on the timers' thread, which it must not hold up. Equal moments keep their order.
    void schedule(Duration delay, std::function<void()> fire);
    /// Drops what is pending and ends the thread; later work is refused.
    void stop();

private:
    void run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::multimap<std::chrono::steady_clock::time_point, std::function<void()>> timers_;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace vantix
