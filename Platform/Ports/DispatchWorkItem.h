#pragma once

#include "Platform/Values/Export.h"

#include <atomic>
#include <functional>
#include <utility>

namespace vantix {

enum class QualityOfService { userInitiated, utility };

/// How an item's own quality of service relates to that of the queue it runs on. Schedulers here treat all work alike;
/// the value travels with the item for hosts that map queues to real priorities.
enum class WorkItemFlags { none, enforceQoS, inheritQoS };

/// A block of work that can be cancelled until it begins. May be performed more than once. Usable from any thread.
class VANTIX_EXPORT DispatchWorkItem {
public:
    DispatchWorkItem(QualityOfService qos, WorkItemFlags flags, std::function<void()> block)
        : qos_(qos), flags_(flags), block_(std::move(block)) {}

    /// Runs the block on the calling thread, unless cancelled.
    void perform() const {
        if (!cancelled_ && block_) block_();
    }
    /// Later performances do nothing; one that runs already is not stopped.
    void cancel() { cancelled_ = true; }

    QualityOfService qualityOfService() const { return qos_; }
    WorkItemFlags flags() const { return flags_; }

private:
    QualityOfService qos_;
    WorkItemFlags flags_;
    std::function<void()> block_;
    std::atomic<bool> cancelled_{false};
};

}  // namespace vantix
