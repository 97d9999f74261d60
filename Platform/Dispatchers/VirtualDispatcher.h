#pragma once

#include "Platform/Dispatchers/VirtualQueue.h"
#include "Platform/Dispatchers/VirtualScheduler.h"
#include "Platform/Ports/Dispatcher.h"

#include <memory>
#include <string>

namespace vantix {

/// Queues in virtual time: one piece of work at a time, in the order in which it was handed over, whatever its queue;
/// time stands still until it is moved. The same program always runs in the same order.
///
/// Work of the main queue runs on the thread that made the dispatcher, all other work on threads that take turns with
/// it. Work that waits in a group steps aside and is handed over anew when the group is empty.
class VirtualDispatcher final : public Dispatcher {
public:
    VirtualDispatcher();
    /// Drops what has not begun. Main thread only.
    ~VirtualDispatcher() override;

    DispatchQueue& mainQueue() override { return mainQueue_; }
    DispatchQueue& utilityQueue() override { return utilityQueue_; }
    std::shared_ptr<DispatchQueue> makeSerialQueue(std::string label, QualityOfService qos) override;
    std::shared_ptr<DispatchGroup> makeGroup() override;
    const Clock& clock() const override { return scheduler_->clock(); }

    /// Runs work until none is left that could run now. Main thread only, as all below.
    void runUntilIdle();
    /// Moves the clock. Timers that become due, those at the very end included, fire one by one in the order of their
    /// times, equal ones in the order in which they were set; all that a timer leads to runs before the next one.
    void advance(Duration duration);

private:
    std::shared_ptr<VirtualScheduler> scheduler_ = std::make_shared<VirtualScheduler>();
    VirtualQueue mainQueue_{scheduler_, VirtualScheduler::QueueKind::main, "main"};
    VirtualQueue utilityQueue_{scheduler_, VirtualScheduler::QueueKind::concurrent, "utility"};
};

}  // namespace vantix
