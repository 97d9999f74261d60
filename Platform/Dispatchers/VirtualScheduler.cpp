#include "Platform/Dispatchers/VirtualScheduler.h"

#include "Platform/Ports/RunningQueue.h"
#include "Platform/Values/FatalError.h"

namespace vantix {

thread_local VirtualScheduler::Worker* VirtualScheduler::currentWorker = nullptr;

Duration VirtualScheduler::VirtualClock::now() const {
    std::lock_guard lock(mutex_);
    return time_;
}

void VirtualScheduler::VirtualClock::set(Duration moment) {
    std::lock_guard lock(mutex_);
    time_ = moment;
}

void VirtualScheduler::handOver(const QueueHandle& queue, Work work) {
    std::lock_guard lock(mutex_);
    if (!stopping_) ready_.push_back({queue, std::move(work)});
}

void VirtualScheduler::handOverAfter(Duration delay, const QueueHandle& queue, Work work) {
    auto due = clock_.now() + delay;
    std::lock_guard lock(mutex_);
    if (!stopping_) timers_.emplace(due, Piece{queue, std::move(work)});
}

void VirtualScheduler::enter(Group& group) {
    std::lock_guard lock(mutex_);
    ++group.count;
}

void VirtualScheduler::leave(Group& group) {
    std::lock_guard lock(mutex_);
    if (--group.count > 0) return;
    for (Worker* waiter : std::exchange(group.waiters, {})) ready_.push_back({waiter->queue, {}, waiter});
}

void VirtualScheduler::wait(Group& group) {
    if (!currentWorker) fatalError("Only work of a queue can wait for a group");
    std::unique_lock lock(mutex_);
    if (group.count == 0 || stopping_) return;
    group.waiters.push_back(currentWorker);
    stepAside(lock, *currentWorker);
}

void VirtualScheduler::runUntilIdle() {
    while (auto piece = takeReady()) run(std::move(*piece));
}

void VirtualScheduler::advance(Duration duration) {
    auto target = clock_.now() + duration;
    runUntilIdle();
    while (auto due = takeDue(target)) {
        handOver(due->queue, std::move(due->work));
        runUntilIdle();
    }
    clock_.set(target);
}

void VirtualScheduler::stop() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
        for (auto& worker : workers_) worker->turn.notify_one();
    }
    for (auto& worker : workers_) worker->thread.join();
    ready_.clear();
    timers_.clear();
}

std::optional<VirtualScheduler::Piece> VirtualScheduler::takeReady() {
    std::lock_guard lock(mutex_);
    while (!ready_.empty()) {
        Piece piece = std::move(ready_.front());
        ready_.pop_front();
        if (piece.resumed || !piece.queue->isHeld) return piece;
        piece.queue->held.push_back(std::move(piece.work));
    }
    return {};
}

std::optional<VirtualScheduler::Piece> VirtualScheduler::takeDue(Duration moment) {
    std::lock_guard lock(mutex_);
    if (timers_.empty() || timers_.begin()->first > moment) return {};
    clock_.set(timers_.begin()->first);
    return std::move(timers_.extract(timers_.begin()).mapped());
}

void VirtualScheduler::run(Piece piece) {
    if (piece.queue->kind == QueueKind::main) {
        piece.work();
        return;
    }
    std::unique_lock lock(mutex_);
    Worker* worker = piece.resumed ? piece.resumed : workerFor(piece);
    mainHasTurn_ = false;
    worker->hasTurn = true;
    worker->turn.notify_one();
    mainTurn_.wait(lock, [this] { return mainHasTurn_; });
}

VirtualScheduler::Worker* VirtualScheduler::workerFor(Piece& piece) {
    if (idleWorkers_.empty()) {
        auto added = std::make_unique<Worker>();
        added->thread = std::thread([this, worker = added.get()] { serve(*worker); });
        idleWorkers_.push_back(added.get());
        workers_.push_back(std::move(added));
    }
    Worker* worker = idleWorkers_.back();
    idleWorkers_.pop_back();
    worker->work = std::move(piece.work);
    worker->queue = piece.queue;
    return worker;
}

void VirtualScheduler::serve(Worker& worker) {
    currentWorker = &worker;
    std::unique_lock lock(mutex_);
    while (true) {
        worker.turn.wait(lock, [&] { return worker.hasTurn || stopping_; });
        if (!worker.hasTurn) return;
        {
            Work work = std::exchange(worker.work, {});
            RunningQueue running(worker.queue.get(), worker.queue->label);
            lock.unlock();
            work();
        }
        lock.lock();
        worker.queue.reset();
        idleWorkers_.push_back(&worker);
        giveTurnBack(worker);
    }
}

void VirtualScheduler::giveTurnBack(Worker& worker) {
    worker.hasTurn = false;
    mainHasTurn_ = true;
    mainTurn_.notify_one();
}

void VirtualScheduler::stepAside(std::unique_lock<std::mutex>& lock, Worker& worker) {
    QueueHandle queue = worker.queue;
    queue->isHeld = queue->kind == QueueKind::serial;
    giveTurnBack(worker);
    worker.turn.wait(lock, [&] { return worker.hasTurn || stopping_; });
    queue->isHeld = false;
    while (!queue->held.empty()) {
        ready_.push_front({queue, std::move(queue->held.back())});
        queue->held.pop_back();
    }
}

}  // namespace vantix
