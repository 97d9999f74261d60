#pragma once

#include "Platform/Dispatchers/TimerThread.h"
#include "Platform/Dispatchers/WorkList.h"
#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/Export.h"

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace vantix {

/// The queue of the thread that made it, which runs its work when it drains it.
class VANTIX_EXPORT MainQueue final : public DispatchQueue {
public:
    explicit MainQueue(std::shared_ptr<TimerThread> timers);

    void async(std::function<void()> work) override;
    void asyncAfter(Duration delay, std::function<void()> work) override;
    bool isCurrent() const override { return std::this_thread::get_id() == mainThread_; }
    std::string_view label() const override { return "main"; }

    /// Called on any thread when there is work. Set before work is handed over.
    void setWaker(std::function<void()> wake) { wake_ = std::move(wake); }
    /// Runs what is there now. Main thread only.
    void drain();
    /// Runs work until then. Main thread only.
    void runUntil(std::chrono::steady_clock::time_point deadline);
    /// Refuses later work.
    void close() { works_.close(); }

private:
    std::shared_ptr<TimerThread> timers_;
    WorkList works_;
    std::thread::id mainThread_ = std::this_thread::get_id();
    std::function<void()> wake_;
};

}  // namespace vantix
