#include "Platform/Dispatchers/ThreadedDispatcher.h"

#include "Platform/Dispatchers/SerialQueue.h"
#include "Platform/Dispatchers/ThreadedGroup.h"
#include "Platform/Ports/RunningQueue.h"

#include <utility>

namespace vantix {

ThreadedDispatcher::~ThreadedDispatcher() { shutDown(); }

void ThreadedDispatcher::shutDown() {
    assertOnQueue(mainQueue_, "ThreadedDispatcher::shutDown");
    timers_->stop();
    // Utility threads may wait for what serial queues have yet to do, so they end first.
    utilityQueue_.close();
    utilityThreads_->joinAll();
    closeSerialQueues();
    serialThreads_->joinAll();
    mainQueue_.close();
}

void ThreadedDispatcher::closeSerialQueues() {
    std::lock_guard lock(mutex_);
    isShutDown_ = true;
    for (const auto& works : serialWorks_) {
        if (auto alive = works.lock()) alive->close();
    }
}

std::shared_ptr<DispatchQueue> ThreadedDispatcher::makeSerialQueue(std::string label, QualityOfService) {
    auto queue = std::make_shared<SerialQueue>(std::move(label), serialThreads_, timers_);
    std::lock_guard lock(mutex_);
    std::erase_if(serialWorks_, [](const auto& works) { return works.expired(); });
    serialWorks_.push_back(queue->works());
    // What waits for a thread that never comes would keep whoever waits for it.
    if (isShutDown_) queue->works()->close();
    return queue;
}

std::shared_ptr<DispatchGroup> ThreadedDispatcher::makeGroup() {
    return std::make_shared<ThreadedGroup>(mainQueue_, utilityQueue_);
}

void ThreadedDispatcher::setMainQueueWaker(std::function<void()> wake) { mainQueue_.setWaker(std::move(wake)); }

void ThreadedDispatcher::drainMainQueue() { mainQueue_.drain(); }

void ThreadedDispatcher::runMainQueue(Duration duration) {
    mainQueue_.runUntil(std::chrono::steady_clock::now() + duration);
}

}  // namespace vantix
