#include "Platform/Dispatchers/UtilityQueue.h"

#include "Platform/Ports/RunningQueue.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace vantix {

namespace {

constexpr std::size_t mostThreads = 16;

}  // namespace

UtilityQueue::UtilityQueue(std::shared_ptr<ThreadRegistry> threads, std::shared_ptr<TimerThread> timers)
    : threads_(std::move(threads)), timers_(std::move(timers)) {}

void UtilityQueue::async(std::function<void()> work) {
    std::lock_guard lock(mutex_);
    if (closed_) return;
    works_.push_back(std::move(work));
    changed_.notify_one();
    startThreadIfUseful();
}

void UtilityQueue::asyncAfter(Duration delay, std::function<void()> work) {
    timers_->schedule(delay, [this, work = std::move(work)] { async(work); });
}

bool UtilityQueue::isCurrent() const { return RunningQueue::is(this); }

void UtilityQueue::beginWaiting() {
    std::lock_guard lock(mutex_);
    ++waiting_;
    startThreadIfUseful();
}

void UtilityQueue::endWaiting() {
    std::lock_guard lock(mutex_);
    --waiting_;
}

void UtilityQueue::close() {
    std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
}

void UtilityQueue::startThreadIfUseful() {
    bool enough = started_ - waiting_ >= std::max(2U, std::thread::hardware_concurrency());
    if (works_.size() <= idle_ || enough || started_ == mostThreads) return;
    ++started_;
    threads_->start([this] { run(); });
}

void UtilityQueue::run() {
    nameThisThread(label());
    RunningQueue running(this, label());
    std::unique_lock lock(mutex_);
    while (true) {
        ++idle_;
        changed_.wait(lock, [this] { return closed_ || !works_.empty(); });
        --idle_;
        if (works_.empty()) return;
        {
            Work work = std::move(works_.front());
            works_.pop_front();
            lock.unlock();
            work();
        }
        lock.lock();
    }
}

}  // namespace vantix
