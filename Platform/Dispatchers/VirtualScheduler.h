#pragma once

#include "Platform/Ports/Clock.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace vantix {

/// Runs one piece of work at a time, in the order of handing over, in time that stands still until it is moved. The
/// thread that made it runs the work of the main queue; all other work runs on workers, threads that take turns with
/// it. Usable from any thread, except where an operation says otherwise.
class VirtualScheduler {
    struct Worker;

public:
    using Work = std::function<void()>;

    enum class QueueKind { main, serial, concurrent };
    struct Queue {
        QueueKind kind;
        std::string label;
        /// Whether work of a serial queue has begun and steps aside in a group; later work of the queue is held
        /// meanwhile.
        bool isHeld = false;
        std::deque<Work> held = {};
    };
    using QueueHandle = std::shared_ptr<Queue>;

    /// Work under way, and the workers that wait for its end.
    struct Group {
        int count = 0;
        std::vector<Worker*> waiters = {};
    };

    VirtualScheduler() = default;
    VirtualScheduler(const VirtualScheduler&) = delete;
    VirtualScheduler& operator=(const VirtualScheduler&) = delete;

    const Clock& clock() const { return clock_; }
    bool isMainThread() const { return std::this_thread::get_id() == mainThread_; }

    void handOver(const QueueHandle& queue, Work work);
    void handOverAfter(Duration delay, const QueueHandle& queue, Work work);

    void enter(Group& group);
    /// At the last one the waiters' work is handed over anew.
    void leave(Group& group);
    /// The calling worker steps aside until the group is empty. Any other thread stops the process.
    void wait(Group& group);

    /// Runs work until none is left that could run now. Main thread only, as all below; the dispatcher looks to that.
    void runUntilIdle();
    /// Moves the clock by that much and fires what becomes due on the way.
    void advance(Duration duration);
    /// Refuses later work, drops what has not begun and ends the workers.
    void stop();

private:
    class VirtualClock final : public Clock {
    public:
        Duration now() const override;
        void set(Duration moment);

    private:
        mutable std::mutex mutex_;
        Duration time_{0};
    };

    /// A thread that runs work when it is given the turn, and gives the turn back at the work's end or when it steps
    /// aside.
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

    std::optional<Piece> takeReady();
    /// Sets the clock to the earliest timer that is due by then, and takes it.
    std::optional<Piece> takeDue(Duration moment);
    void run(Piece piece);
    Worker* workerFor(Piece& piece);
    void serve(Worker& worker);
    void giveTurnBack(Worker& worker);
    void stepAside(std::unique_lock<std::mutex>& lock, Worker& worker);

    /// The worker whose thread this is.
    static thread_local Worker* currentWorker;

    const std::thread::id mainThread_ = std::this_thread::get_id();
    VirtualClock clock_;
    std::mutex mutex_;
    std::condition_variable mainTurn_;
    bool mainHasTurn_ = true;
    bool stopping_ = false;
    std::deque<Piece> ready_;
    std::multimap<Duration, Piece> timers_;
    std::vector<std::unique_ptr<Worker>> workers_;
    std::vector<Worker*> idleWorkers_;
};

}  // namespace vantix
