#pragma once

#include "Platform/Ports/Dispatcher.h"

#include <memory>

namespace vantix {

/// Queues on real threads, and real time. Idle queues make no wake-ups.
///
/// Made and destroyed on the main thread.
class ThreadedDispatcher final : public Dispatcher {
public:
    ThreadedDispatcher();
    /// Shuts down.
    ~ThreadedDispatcher() override;

    /// Refuses later work, drops pending timers, lets the queues finish what they were handed before, and joins every
    /// thread. A second call does nothing. Main thread only.
    void shutDown();

    DispatchQueue& mainQueue() override;
    DispatchQueue& utilityQueue() override;
    std::shared_ptr<DispatchQueue> makeSerialQueue(std::string label, QualityOfService qos) override;
    std::shared_ptr<DispatchGroup> makeGroup() override;
    const Clock& clock() const override;

    /// Called on any thread when the main queue gets work, so that a host can wake its loop; the host answers with
    /// `drainMainQueue` on the main thread. Set before work is handed over.
    void setMainQueueWaker(std::function<void()> wake);
    /// Runs what the main queue holds now. Main thread only.
    void drainMainQueue();
    /// Runs the main queue for that long, for programs without a loop of their own. Main thread only.
    void runMainQueue(Duration duration);

private:
    struct Implementation;
    std::shared_ptr<Implementation> implementation_;
};

}  // namespace vantix
