#pragma once

#include "Platform/Dispatchers/VirtualScheduler.h"
#include "Platform/Ports/DispatchQueue.h"

#include <functional>
#include <memory>
#include <string>

namespace vantix {

/// A queue in virtual time. Once its scheduler is gone it refuses work.
class VirtualQueue final : public DispatchQueue {
public:
    VirtualQueue(const std::shared_ptr<VirtualScheduler>& scheduler, VirtualScheduler::QueueKind kind,
                 std::string label);

    void async(std::function<void()> work) override;
    void asyncAfter(Duration delay, std::function<void()> work) override;
    bool isCurrent() const override;
    std::string_view label() const override { return queue_->label; }

private:
    std::weak_ptr<VirtualScheduler> scheduler_;
    VirtualScheduler::QueueHandle queue_;
};

}  // namespace vantix
