#include "Platform/Dispatchers/VirtualDispatcher.h"

#include "Platform/Dispatchers/VirtualGroup.h"
#include "Platform/Ports/RunningQueue.h"

#include <utility>

namespace vantix {

VirtualDispatcher::VirtualDispatcher() { RunningQueue::setThreadLabel("main"); }

VirtualDispatcher::~VirtualDispatcher() {
    assertOnQueue(mainQueue_, "VirtualDispatcher::~VirtualDispatcher");
    scheduler_->stop();
}

std::shared_ptr<DispatchQueue> VirtualDispatcher::makeSerialQueue(std::string label, QualityOfService) {
    return std::make_shared<VirtualQueue>(scheduler_, VirtualScheduler::QueueKind::serial, std::move(label));
}

std::shared_ptr<DispatchGroup> VirtualDispatcher::makeGroup() {
    return std::make_shared<VirtualGroup>(mainQueue_, scheduler_);
}

void VirtualDispatcher::runUntilIdle() {
    assertOnQueue(mainQueue_, "VirtualDispatcher::runUntilIdle");
    scheduler_->runUntilIdle();
}

void VirtualDispatcher::advance(Duration duration) {
    assertOnQueue(mainQueue_, "VirtualDispatcher::advance");
    scheduler_->advance(duration);
}

}  // namespace vantix
