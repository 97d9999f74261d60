#pragma once

#include "Platform/Dispatchers/ThreadRegistry.h"
#include "Platform/Dispatchers/TimerThread.h"
#include "Platform/Dispatchers/WorkList.h"
#include "Platform/Ports/DispatchQueue.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace vantix {

/// A thread of its own, from the first work to the end of the dispatcher or of the queue.
class SerialQueue final : public DispatchQueue {
public:
    SerialQueue(std::string label, std::shared_ptr<ThreadRegistry> threads, std::shared_ptr<TimerThread> timers);
    /// The thread still does what it was handed before.
    ~SerialQueue() override;

    void async(std::function<void()> work) override;
    void asyncAfter(Duration delay, std::function<void()> work) override;
    bool isCurrent() const override;
    std::string_view label() const override { return label_; }

    /// For the dispatcher, which closes it.
    const std::shared_ptr<WorkList>& works() const { return works_; }

private:
    void startThreadOnce();

    std::string label_;
    std::shared_ptr<ThreadRegistry> threads_;
    std::shared_ptr<TimerThread> timers_;
    std::shared_ptr<WorkList> works_ = std::make_shared<WorkList>();
    std::once_flag started_;
};

}  // namespace vantix
