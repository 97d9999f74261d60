#include "Platform/Dispatchers/TimerThread.h"

#include "Platform/Dispatchers/ThreadRegistry.h"

#include <utility>

namespace vantix {

using SteadyClock = std::chrono::steady_clock;

void TimerThread::schedule(Duration delay, std::function<void()> fire) {
    std::lock_guard lock(mutex_);
    if (stopping_) return;
    timers_.emplace(SteadyClock::now() + delay, std::move(fire));
    if (!thread_.joinable()) thread_ = std::thread([this] { run(); });
    changed_.notify_one();
}

void TimerThread::stop() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
        timers_.clear();
    }
    changed_.notify_one();
    if (thread_.joinable()) thread_.join();
}

void TimerThread::run() {
    nameThisThread("timers");
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        if (timers_.empty()) {
            changed_.wait(lock);
        } else if (auto due = timers_.begin()->first; due > SteadyClock::now()) {
            changed_.wait_until(lock, due);
        } else {
            auto fire = std::move(timers_.begin()->second);
            timers_.erase(timers_.begin());
            lock.unlock();
            fire();
            lock.lock();
        }
    }
}

}  // namespace vantix
