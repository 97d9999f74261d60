#include "Platform/Dispatchers/WorkList.h"

#include <utility>

namespace vantix {

bool WorkList::append(Work work) {
    {
        std::lock_guard lock(mutex_);
        if (closed_) return false;
        works_.push_back(std::move(work));
    }
    changed_.notify_one();
    return true;
}

std::optional<Work> WorkList::take() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return closed_ || !works_.empty(); });
    return takeFront();
}

std::optional<Work> WorkList::takeUntil(std::chrono::steady_clock::time_point deadline) {
    std::unique_lock lock(mutex_);
    changed_.wait_until(lock, deadline, [this] { return closed_ || !works_.empty(); });
    return takeFront();
}

std::deque<Work> WorkList::takeAll() {
    std::lock_guard lock(mutex_);
    return std::exchange(works_, {});
}

void WorkList::close() {
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
    }
    changed_.notify_all();
}

std::optional<Work> WorkList::takeFront() {
    if (works_.empty()) return {};
    Work work = std::move(works_.front());
    works_.pop_front();
    return work;
}

}  // namespace vantix
