#pragma once

#include "Platform/Dispatchers/ThreadRegistry.h"
#include "Platform/Dispatchers/TimerThread.h"
#include "Platform/Dispatchers/WorkList.h"
#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/Export.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace vantix {

/// Shares its work among threads. Threads that wait in a group do not count as busy, so others are started in their
/// place, up to 16.
class VANTIX_EXPORT UtilityQueue final : public DispatchQueue {
public:
    UtilityQueue(std::shared_ptr<ThreadRegistry> threads, std::shared_ptr<TimerThread> timers);

    void async(std::function<void()> work) override;
    void asyncAfter(Duration delay, std::function<void()> work) override;
    bool isCurrent() const override;
    std::string_view label() const override { return "utility"; }

    /// Around a wait of one of its threads.
    void beginWaiting();
    void endWaiting();

    /// Refuses later work and lets the threads end when they have done what is there.
    void close();

private:
    void startThreadIfUseful();
    void run();

    std::shared_ptr<ThreadRegistry> threads_;
    std::shared_ptr<TimerThread> timers_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Work> works_;
    std::size_t started_ = 0;
    std::size_t idle_ = 0;
    std::size_t waiting_ = 0;
    bool closed_ = false;
};

}  // namespace vantix
