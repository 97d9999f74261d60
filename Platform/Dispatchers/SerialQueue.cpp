#include "Platform/Dispatchers/SerialQueue.h"

#include "Platform/Ports/RunningQueue.h"

#include <utility>

namespace vantix {

SerialQueue::SerialQueue(std::string label, std::shared_ptr<ThreadRegistry> threads,
                         std::shared_ptr<TimerThread> timers)
    : label_(std::move(label)), threads_(std::move(threads)), timers_(std::move(timers)) {}

SerialQueue::~SerialQueue() { works_->close(); }

void SerialQueue::async(std::function<void()> work) {
    startThreadOnce();
    works_->append(std::move(work));
}

void SerialQueue::asyncAfter(Duration delay, std::function<void()> work) {
    startThreadOnce();
    timers_->schedule(delay, [works = works_, work = std::move(work)] { works->append(work); });
}

bool SerialQueue::isCurrent() const { return RunningQueue::is(works_.get()); }

void SerialQueue::startThreadOnce() {
    std::call_once(started_, [this] {
        threads_->start([works = works_, label = label_] {
            nameThisThread(label);
            RunningQueue running(works.get(), label);
            while (auto work = works->take()) (*work)();
        });
    });
}

}  // namespace vantix
