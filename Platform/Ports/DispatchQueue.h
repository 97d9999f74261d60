#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Ports/DispatchWorkItem.h"
#include "Platform/Values/Export.h"

#include <functional>
#include <memory>
#include <string_view>

namespace vantix {

/// Takes work and runs it later, in the order in which it was handed over. Usable from any thread. Work never runs
/// within the call that hands it over, and must not throw. After its dispatcher is gone, later work is refused
/// silently.
class VANTIX_EXPORT DispatchQueue {
public:
    virtual ~DispatchQueue() = default;

    virtual void async(std::function<void()> work) = 0;
    /// Hands the work over once `delay` has passed. Equal moments keep their order.
    virtual void asyncAfter(Duration delay, std::function<void()> work) = 0;
    /// Whether the caller runs on this queue.
    virtual bool isCurrent() const = 0;
    /// Names the queue in assertions and, by its last part, its threads in debuggers. Lives as long as the queue.
    virtual std::string_view label() const = 0;

    void async(std::shared_ptr<DispatchWorkItem> item) {
        async([item = std::move(item)] { item->perform(); });
    }
    void asyncAfter(Duration delay, std::shared_ptr<DispatchWorkItem> item) {
        asyncAfter(delay, [item = std::move(item)] { item->perform(); });
    }
};

}  // namespace vantix
