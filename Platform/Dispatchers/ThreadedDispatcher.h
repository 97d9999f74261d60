#pragma once

#include "Platform/Dispatchers/MainQueue.h"
#include "Platform/Dispatchers/ThreadRegistry.h"
#include "Platform/Dispatchers/TimerThread.h"
#include "Platform/Dispatchers/UtilityQueue.h"
#include "Platform/Ports/Dispatcher.h"
#include "Platform/Values/Export.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace vantix {

/// Queues on real threads, and real time. Idle queues make no wake-ups.
///
/// Made and destroyed on the main thread.
class VANTIX_EXPORT ThreadedDispatcher final : public Dispatcher {
public:
    ThreadedDispatcher() = default;
    /// Shuts down.
    ~ThreadedDispatcher() override;

    /// Refuses later work, drops pending timers, lets the queues finish what they were handed before, and joins every
    /// thread. A second call does nothing. Main thread only.
    void shutDown();

    DispatchQueue& mainQueue() override { return mainQueue_; }
    DispatchQueue& utilityQueue() override { return utilityQueue_; }
    std::shared_ptr<DispatchQueue> makeSerialQueue(std::string label, QualityOfService qos) override;
    std::shared_ptr<DispatchGroup> makeGroup() override;
    const Clock& clock() const override { return clock_; }

    /// Called on any thread when the main queue gets work, so that a host can wake its loop; the host answers with
    /// `drainMainQueue` on the main thread. Set before work is handed over.
    void setMainQueueWaker(std::function<void()> wake);
    /// Runs what the main queue holds now. Main thread only.
    void drainMainQueue();
    /// Runs the main queue for that long, for programs without a loop of their own. Main thread only.
    void runMainQueue(Duration duration);

private:
    class RealClock final : public Clock {
    public:
        Duration now() const override { return std::chrono::steady_clock::now() - start_; }

    private:
        std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    };

    void closeSerialQueues();

    RealClock clock_;
    std::shared_ptr<ThreadRegistry> serialThreads_ = std::make_shared<ThreadRegistry>();
    std::shared_ptr<ThreadRegistry> utilityThreads_ = std::make_shared<ThreadRegistry>();
    std::shared_ptr<TimerThread> timers_ = std::make_shared<TimerThread>();
    MainQueue mainQueue_{timers_};
    UtilityQueue utilityQueue_{utilityThreads_, timers_};
    std::mutex mutex_;
    std::vector<std::weak_ptr<WorkList>> serialWorks_;
    bool isShutDown_ = false;
};

}  // namespace vantix
