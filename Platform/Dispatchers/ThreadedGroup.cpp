#include "Platform/Dispatchers/ThreadedGroup.h"

#include "Platform/Ports/RunningQueue.h"

namespace vantix {

void ThreadedGroup::enter() {
    std::lock_guard lock(mutex_);
    ++count_;
}

void ThreadedGroup::leave() {
    std::lock_guard lock(mutex_);
    if (--count_ == 0) empty_.notify_all();
}

void ThreadedGroup::wait() {
    assertNotOnQueue(main_, "DispatchGroup::wait");
    bool counted = utility_.isCurrent();
    if (counted) utility_.beginWaiting();
    {
        std::unique_lock lock(mutex_);
        empty_.wait(lock, [this] { return count_ == 0; });
    }
    if (counted) utility_.endWaiting();
}

}  // namespace vantix
