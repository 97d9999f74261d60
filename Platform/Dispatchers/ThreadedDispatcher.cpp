#include "Platform/Dispatchers/ThreadedDispatcher.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace vantix {

namespace {

using Work = std::function<void()>;
using SteadyClock = std::chrono::steady_clock;

constexpr std::size_t mostUtilityThreads = 16;

/// The queue whose work runs on this thread.
thread_local const void* currentQueue = nullptr;

class RealClock final : public Clock {
public:
    Duration now() const override { return SteadyClock::now() - start_; }

private:
    SteadyClock::time_point start_ = SteadyClock::now();
};

/// Waits for the earliest of the delayed works on a thread of its own, which starts with the first of them.
class TimerThread {
public:
    void schedule(Duration delay, Work fire) {
        std::lock_guard lock(mutex_);
        if (stopping_) return;
        timers_.emplace(SteadyClock::now() + delay, std::move(fire));
        if (!thread_.joinable()) thread_ = std::thread([this] { run(); });
        changed_.notify_one();
    }

    void stop() {
        {
            std::lock_guard lock(mutex_);
            stopping_ = true;
            timers_.clear();
        }
        changed_.notify_one();
        if (thread_.joinable()) thread_.join();
    }

private:
    void run() {
        std::unique_lock lock(mutex_);
        while (!stopping_) {
            if (timers_.empty()) {
                changed_.wait(lock);
            } else if (auto due = timers_.begin()->first; due > SteadyClock::now()) {
                changed_.wait_until(lock, due);
            } else {
                Work fire = std::move(timers_.begin()->second);
                timers_.erase(timers_.begin());
                lock.unlock();
                fire();
                lock.lock();
            }
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::multimap<SteadyClock::time_point, Work> timers_;
    bool stopping_ = false;
    std::thread thread_;
};

/// A guarded list of work; threads take from its front.
class WorkList {
public:
    /// False when the list is closed and the work refused.
    bool append(Work work) {
        {
            std::lock_guard lock(mutex_);
            if (closed_) return false;
            works_.push_back(std::move(work));
        }
        changed_.notify_one();
        return true;
    }

    /// Waits for work; absent once the list is closed and empty.
    std::optional<Work> take() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return closed_ || !works_.empty(); });
        return takeFront();
    }

    std::optional<Work> takeUntil(SteadyClock::time_point deadline) {
        std::unique_lock lock(mutex_);
        changed_.wait_until(lock, deadline, [this] { return closed_ || !works_.empty(); });
        return takeFront();
    }

    std::deque<Work> takeAll() {
        std::lock_guard lock(mutex_);
        return std::exchange(works_, {});
    }

    void close() {
        {
            std::lock_guard lock(mutex_);
            closed_ = true;
        }
        changed_.notify_all();
    }

private:
    std::optional<Work> takeFront() {
        if (works_.empty()) return {};
        Work work = std::move(works_.front());
        works_.pop_front();
        return work;
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Work> works_;
    bool closed_ = false;
};

/// Every thread that the dispatcher has started, for the final join; starts none afterwards.
class ThreadRegistry {
public:
    void start(Work body) {
        std::lock_guard lock(mutex_);
        if (!closed_) threads_.emplace_back(std::move(body));
    }

    void joinAll() {
        std::vector<std::thread> threads;
        {
            std::lock_guard lock(mutex_);
            closed_ = true;
            threads.swap(threads_);
        }
        for (std::thread& thread : threads) thread.join();
    }

private:
    std::mutex mutex_;
    bool closed_ = false;
    std::vector<std::thread> threads_;
};

class MainQueue final : public DispatchQueue {
public:
    explicit MainQueue(std::shared_ptr<TimerThread> timers) : timers_(std::move(timers)) {}

    void async(Work work) override {
        if (works_->append(std::move(work)) && wake_) wake_();
    }
    void asyncAfter(Duration delay, Work work) override {
        timers_->schedule(delay, [this, work = std::move(work)] { async(work); });
    }
    bool isCurrent() const override { return std::this_thread::get_id() == mainThread_; }

    void setWaker(Work wake) { wake_ = std::move(wake); }

    void drain() {
        for (Work& work : works_->takeAll()) work();
    }

    void runUntil(SteadyClock::time_point deadline) {
        while (auto work = works_->takeUntil(deadline)) (*work)();
    }

    void close() { works_->close(); }

private:
    std::shared_ptr<TimerThread> timers_;
    std::shared_ptr<WorkList> works_ = std::make_shared<WorkList>();
    std::thread::id mainThread_ = std::this_thread::get_id();
    Work wake_;
};

/// A thread of its own, from the first work to the end of the dispatcher or of the queue.
class SerialQueue final : public DispatchQueue {
public:
    SerialQueue(std::shared_ptr<ThreadRegistry> threads, std::shared_ptr<TimerThread> timers)
        : threads_(std::move(threads)), timers_(std::move(timers)) {}
    ~SerialQueue() override { works_->close(); }

    void async(Work work) override {
        std::call_once(started_, [this] { start(); });
        works_->append(std::move(work));
    }
    void asyncAfter(Duration delay, Work work) override {
        std::call_once(started_, [this] { start(); });
        timers_->schedule(delay, [works = works_, work = std::move(work)] { works->append(work); });
    }
    bool isCurrent() const override { return currentQueue == works_.get(); }

    std::shared_ptr<WorkList> works() const { return works_; }

private:
    void start() {
        threads_->start([works = works_] {
            currentQueue = works.get();
            while (auto work = works->take()) (*work)();
        });
    }

    std::shared_ptr<ThreadRegistry> threads_;
    std::shared_ptr<TimerThread> timers_;
    std::shared_ptr<WorkList> works_ = std::make_shared<WorkList>();
    std::once_flag started_;
};

/// Shares its work among threads. Threads that wait in a group do not count as busy, so others are started in their
/// place.
class UtilityQueue final : public DispatchQueue {
public:
    UtilityQueue(std::shared_ptr<ThreadRegistry> threads, std::shared_ptr<TimerThread> timers)
        : threads_(std::move(threads)), timers_(std::move(timers)) {}

    void async(Work work) override {
        std::lock_guard lock(mutex_);
        if (closed_) return;
        works_.push_back(std::move(work));
        changed_.notify_one();
        startThreadIfUseful();
    }
    void asyncAfter(Duration delay, Work work) override {
        timers_->schedule(delay, [this, work = std::move(work)] { async(work); });
    }
    bool isCurrent() const override { return currentQueue == this; }

    void beginWaiting() {
        std::lock_guard lock(mutex_);
        ++waiting_;
        startThreadIfUseful();
    }
    void endWaiting() {
        std::lock_guard lock(mutex_);
        --waiting_;
    }

    void close() {
        std::lock_guard lock(mutex_);
        closed_ = true;
        changed_.notify_all();
    }

private:
    void startThreadIfUseful() {
        bool enough = started_ - waiting_ >= std::max(2U, std::thread::hardware_concurrency());
        if (works_.size() <= idle_ || enough || started_ == mostUtilityThreads) return;
        ++started_;
        threads_->start([this] { run(); });
    }

    void run() {
        currentQueue = this;
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

    std::shared_ptr<ThreadRegistry> threads_;
    std::shared_ptr<TimerThread> timers_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Work> works_;
    std::size_t started_ = 0;
    std::size_t idle_ = 0;
    std::size_t waiting_ = 0;
    bool closed_ = false;
};

class ThreadedGroup final : public DispatchGroup {
public:
    explicit ThreadedGroup(UtilityQueue& utility) : utility_(utility) {}

    void enter() override {
        std::lock_guard lock(mutex_);
        ++count_;
    }
    void leave() override {
        std::lock_guard lock(mutex_);
        if (--count_ == 0) empty_.notify_all();
    }
    void wait() override {
        bool counted = utility_.isCurrent();
        if (counted) utility_.beginWaiting();
        {
            std::unique_lock lock(mutex_);
            empty_.wait(lock, [this] { return count_ == 0; });
        }
        if (counted) utility_.endWaiting();
    }

private:
    UtilityQueue& utility_;
    std::mutex mutex_;
    std::condition_variable empty_;
    int count_ = 0;
};

}  // namespace

struct ThreadedDispatcher::Implementation {
    RealClock clock;
    std::shared_ptr<ThreadRegistry> serialThreads = std::make_shared<ThreadRegistry>();
    std::shared_ptr<ThreadRegistry> utilityThreads = std::make_shared<ThreadRegistry>();
    std::shared_ptr<TimerThread> timers = std::make_shared<TimerThread>();
    MainQueue mainQueue{timers};
    UtilityQueue utilityQueue{utilityThreads, timers};
    std::mutex mutex;
    std::vector<std::weak_ptr<WorkList>> serialWorks;
};

ThreadedDispatcher::ThreadedDispatcher() : implementation_(std::make_shared<Implementation>()) {}

ThreadedDispatcher::~ThreadedDispatcher() { shutDown(); }

void ThreadedDispatcher::shutDown() {
    implementation_->timers->stop();
    // Utility threads may wait for what serial queues have yet to do, so they end first.
    implementation_->utilityQueue.close();
    implementation_->utilityThreads->joinAll();
    {
        std::lock_guard lock(implementation_->mutex);
        for (const auto& works : implementation_->serialWorks) {
            if (auto alive = works.lock()) alive->close();
        }
    }
    implementation_->serialThreads->joinAll();
    implementation_->mainQueue.close();
}

DispatchQueue& ThreadedDispatcher::mainQueue() { return implementation_->mainQueue; }

DispatchQueue& ThreadedDispatcher::utilityQueue() { return implementation_->utilityQueue; }

std::shared_ptr<DispatchQueue> ThreadedDispatcher::makeSerialQueue(std::string, QualityOfService) {
    auto queue = std::make_shared<SerialQueue>(implementation_->serialThreads, implementation_->timers);
    std::lock_guard lock(implementation_->mutex);
    implementation_->serialWorks.push_back(queue->works());
    return queue;
}

std::shared_ptr<DispatchGroup> ThreadedDispatcher::makeGroup() {
    return std::make_shared<ThreadedGroup>(implementation_->utilityQueue);
}

const Clock& ThreadedDispatcher::clock() const { return implementation_->clock; }

void ThreadedDispatcher::setMainQueueWaker(std::function<void()> wake) {
    implementation_->mainQueue.setWaker(std::move(wake));
}

void ThreadedDispatcher::drainMainQueue() { implementation_->mainQueue.drain(); }

void ThreadedDispatcher::runMainQueue(Duration duration) {
    implementation_->mainQueue.runUntil(SteadyClock::now() + duration);
}

}  // namespace vantix
