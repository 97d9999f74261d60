#include "Platform/Dispatchers/VirtualQueue.h"

#include "Platform/Ports/RunningQueue.h"

#include <utility>

namespace vantix {

using Queue = VirtualScheduler::Queue;

VirtualQueue::VirtualQueue(const std::shared_ptr<VirtualScheduler>& scheduler, VirtualScheduler::QueueKind kind,
                           std::string label)
    : scheduler_(scheduler), queue_(std::make_shared<Queue>(Queue{.kind = kind, .label = std::move(label)})) {}

void VirtualQueue::async(std::function<void()> work) {
    if (auto scheduler = scheduler_.lock()) scheduler->handOver(queue_, std::move(work));
}

void VirtualQueue::asyncAfter(Duration delay, std::function<void()> work) {
    if (auto scheduler = scheduler_.lock()) scheduler->handOverAfter(delay, queue_, std::move(work));
}

bool VirtualQueue::isCurrent() const {
    if (queue_->kind != VirtualScheduler::QueueKind::main) return RunningQueue::is(queue_.get());
    auto scheduler = scheduler_.lock();
    return scheduler && scheduler->isMainThread();
}

}  // namespace vantix
