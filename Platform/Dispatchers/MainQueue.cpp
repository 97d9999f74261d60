#include "Platform/Dispatchers/MainQueue.h"

#include "Platform/Ports/RunningQueue.h"

#include <utility>

namespace vantix {

MainQueue::MainQueue(std::shared_ptr<TimerThread> timers) : timers_(std::move(timers)) {
    RunningQueue::setThreadLabel("main");
}

void MainQueue::async(std::function<void()> work) {
    if (works_.append(std::move(work)) && wake_) wake_();
}

void MainQueue::asyncAfter(Duration delay, std::function<void()> work) {
    timers_->schedule(delay, [this, work = std::move(work)] { async(work); });
}

void MainQueue::drain() {
    assertOnQueue(*this, "MainQueue::drain");
    for (Work& work : works_.takeAll()) work();
}

void MainQueue::runUntil(std::chrono::steady_clock::time_point deadline) {
    assertOnQueue(*this, "MainQueue::runUntil");
    while (auto work = works_.takeUntil(deadline)) (*work)();
}

}  // namespace vantix
