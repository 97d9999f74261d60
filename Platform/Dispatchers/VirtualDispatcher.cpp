#include "Platform/Dispatchers/VirtualDispatcher.h"

#include "Platform/Values/FatalError.h"

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

struct QueueState {
    bool isMain = false;
    bool isSerial = true;
    /// Whether work of a serial queue has begun and steps aside in a group; later work of the queue is held meanwhile.
    bool isHeld = false;
    std::deque<Work> held;
};

using QueueHandle = std::shared_ptr<QueueState>;

thread_local const QueueState* currentQueue = nullptr;

/// A thread that runs work when it is given the turn, and gives the turn back at the work's end or when it steps aside.
struct Worker {
    std::thread thread;
    std::condition_variable turn;
    bool hasTurn = false;
    Work work;
    QueueHandle queue;
};

/// Work that waits for its turn: a new one, or the rest of one that had stepped aside.
struct Piece {
    QueueHandle queue;
    Work work;
    Worker* resumed = nullptr;
};

}  // namespace

struct VirtualDispatcher::Implementation {
    struct VirtualClock final : Clock {
        Duration time{0};
        mutable std::mutex mutex;
        Duration now() const override {
            std::lock_guard lock(mutex);
            return time;
        }
        void set(Duration moment) {
            std::lock_guard lock(mutex);
            time = moment;
        }
    };

    const std::thread::id mainThread = std::this_thread::get_id();
    std::mutex mutex;
    std::condition_variable mainTurn;
    bool mainHasTurn = true;
    bool stopping = false;
    std::deque<Piece> ready;
    std::multimap<Duration, std::pair<QueueHandle, Work>> timers;
    std::vector<std::unique_ptr<Worker>> workers;
    std::vector<Worker*> idleWorkers;
    VirtualClock clock;
    QueueHandle mainState = std::make_shared<QueueState>(QueueState{.isMain = true, .held = {}});
    QueueHandle utilityState = std::make_shared<QueueState>(QueueState{.isSerial = false, .held = {}});
    std::unique_ptr<DispatchQueue> mainQueue;
    std::unique_ptr<DispatchQueue> utilityQueue;

    void handOver(const QueueHandle& queue, Work work) {
        std::lock_guard lock(mutex);
        if (!stopping) ready.push_back({queue, std::move(work)});
    }

    void handOverAfter(Duration delay, const QueueHandle& queue, Work work) {
        auto due = clock.now() + delay;
        std::lock_guard lock(mutex);
        if (!stopping) timers.emplace(due, std::pair(queue, std::move(work)));
    }

    std::optional<Piece> takeReady() {
        std::lock_guard lock(mutex);
        while (!ready.empty()) {
            Piece piece = std::move(ready.front());
            ready.pop_front();
            if (piece.resumed || !piece.queue->isHeld) return piece;
            piece.queue->held.push_back(std::move(piece.work));
        }
        return {};
    }

    void run(Piece piece) {
        if (piece.queue->isMain) {
            piece.work();
            return;
        }
        std::unique_lock lock(mutex);
        Worker* worker = piece.resumed ? piece.resumed : workerFor(piece);
        mainHasTurn = false;
        worker->hasTurn = true;
        worker->turn.notify_one();
        mainTurn.wait(lock, [this] { return mainHasTurn; });
    }

    Worker* workerFor(Piece& piece) {
        if (idleWorkers.empty()) {
            auto added = std::make_unique<Worker>();
            added->thread = std::thread([this, worker = added.get()] { serve(*worker); });
            idleWorkers.push_back(added.get());
            workers.push_back(std::move(added));
        }
        Worker* worker = idleWorkers.back();
        idleWorkers.pop_back();
        worker->work = std::move(piece.work);
        worker->queue = piece.queue;
        return worker;
    }

    void serve(Worker& worker) {
        currentWorker = &worker;
        std::unique_lock lock(mutex);
        while (true) {
            worker.turn.wait(lock, [&] { return worker.hasTurn || stopping; });
            if (!worker.hasTurn) return;
            Work work = std::exchange(worker.work, {});
            currentQueue = worker.queue.get();
            lock.unlock();
            work();
            work = {};
            lock.lock();
            currentQueue = nullptr;
            worker.queue.reset();
            idleWorkers.push_back(&worker);
            giveTurnBack(worker);
        }
    }

    void giveTurnBack(Worker& worker) {
        worker.hasTurn = false;
        mainHasTurn = true;
        mainTurn.notify_one();
    }

    /// Lets others run until the group hands the rest of this worker's work over again.
    void stepAside(std::unique_lock<std::mutex>& lock, Worker& worker) {
        QueueHandle queue = worker.queue;
        queue->isHeld = queue->isSerial;
        giveTurnBack(worker);
        worker.turn.wait(lock, [&] { return worker.hasTurn || stopping; });
        queue->isHeld = false;
        while (!queue->held.empty()) {
            ready.push_front({queue, std::move(queue->held.back())});
            queue->held.pop_back();
        }
    }

    static thread_local Worker* currentWorker;
};

thread_local Worker* VirtualDispatcher::Implementation::currentWorker = nullptr;

namespace {

/// Implementation is private to the dispatcher, so its helpers are templates over it.
template <typename Implementation>
class VirtualQueue final : public DispatchQueue {
public:
    VirtualQueue(std::weak_ptr<Implementation> owner, QueueHandle state)
        : owner_(std::move(owner)), state_(std::move(state)) {}

    void async(Work work) override {
        if (auto owner = owner_.lock()) owner->handOver(state_, std::move(work));
    }
    void asyncAfter(Duration delay, Work work) override {
        if (auto owner = owner_.lock()) owner->handOverAfter(delay, state_, std::move(work));
    }
    bool isCurrent() const override {
        if (!state_->isMain) return currentQueue == state_.get();
        auto owner = owner_.lock();
        return owner && owner->mainThread == std::this_thread::get_id();
    }

private:
    std::weak_ptr<Implementation> owner_;
    QueueHandle state_;
};

template <typename Implementation>
class VirtualGroup final : public DispatchGroup {
public:
    explicit VirtualGroup(std::weak_ptr<Implementation> owner) : owner_(std::move(owner)) {}

    void enter() override {
        if (auto owner = owner_.lock()) {
            std::lock_guard lock(owner->mutex);
            ++count_;
        }
    }

    void leave() override {
        auto owner = owner_.lock();
        if (!owner) return;
        std::lock_guard lock(owner->mutex);
        if (--count_ > 0) return;
        for (Worker* waiter : std::exchange(waiters_, {})) owner->ready.push_back({waiter->queue, {}, waiter});
    }

    void wait() override {
        auto owner = owner_.lock();
        Worker* worker = Implementation::currentWorker;
        if (!worker) fatalError("The main thread must not wait for a group");
        if (!owner) return;
        std::unique_lock lock(owner->mutex);
        if (count_ == 0 || owner->stopping) return;
        waiters_.push_back(worker);
        owner->stepAside(lock, *worker);
    }

private:
    std::weak_ptr<Implementation> owner_;
    int count_ = 0;
    std::vector<Worker*> waiters_;
};

}  // namespace

VirtualDispatcher::VirtualDispatcher() : implementation_(std::make_shared<Implementation>()) {
    using Queue = VirtualQueue<Implementation>;
    implementation_->mainQueue = std::make_unique<Queue>(implementation_, implementation_->mainState);
    implementation_->utilityQueue = std::make_unique<Queue>(implementation_, implementation_->utilityState);
}

VirtualDispatcher::~VirtualDispatcher() {
    {
        std::lock_guard lock(implementation_->mutex);
        implementation_->stopping = true;
        for (auto& worker : implementation_->workers) worker->turn.notify_one();
    }
    for (auto& worker : implementation_->workers) worker->thread.join();
    implementation_->ready.clear();
    implementation_->timers.clear();
}

DispatchQueue& VirtualDispatcher::mainQueue() { return *implementation_->mainQueue; }

DispatchQueue& VirtualDispatcher::utilityQueue() { return *implementation_->utilityQueue; }

std::shared_ptr<DispatchQueue> VirtualDispatcher::makeSerialQueue(std::string, QualityOfService) {
    return std::make_shared<VirtualQueue<Implementation>>(implementation_, std::make_shared<QueueState>());
}

std::shared_ptr<DispatchGroup> VirtualDispatcher::makeGroup() {
    return std::make_shared<VirtualGroup<Implementation>>(implementation_);
}

const Clock& VirtualDispatcher::clock() const { return implementation_->clock; }

void VirtualDispatcher::runUntilIdle() {
    while (auto piece = implementation_->takeReady()) implementation_->run(std::move(*piece));
}

void VirtualDispatcher::advance(Duration duration) {
    auto& all = *implementation_;
    auto target = all.clock.now() + duration;
    auto takeDue = [&]() -> std::optional<std::pair<QueueHandle, Work>> {
        std::lock_guard lock(all.mutex);
        if (all.timers.empty() || all.timers.begin()->first > target) return {};
        all.clock.set(all.timers.begin()->first);
        auto due = std::move(all.timers.begin()->second);
        all.timers.erase(all.timers.begin());
        return due;
    };
    runUntilIdle();
    while (auto due = takeDue()) {
        all.handOver(due->first, std::move(due->second));
        runUntilIdle();
    }
    all.clock.set(target);
}

}  // namespace vantix
