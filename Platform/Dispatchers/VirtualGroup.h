#pragma once

#include "Platform/Dispatchers/VirtualScheduler.h"
#include "Platform/Ports/DispatchGroup.h"

#include <memory>
#include <utility>

namespace vantix {

/// A group in virtual time. Once its scheduler is gone nobody waits.
class VirtualGroup final : public DispatchGroup {
public:
    explicit VirtualGroup(std::weak_ptr<VirtualScheduler> scheduler) : scheduler_(std::move(scheduler)) {}

    void enter() override {
        if (auto scheduler = scheduler_.lock()) scheduler->enter(group_);
    }
    void leave() override {
        if (auto scheduler = scheduler_.lock()) scheduler->leave(group_);
    }
    void wait() override {
        if (auto scheduler = scheduler_.lock()) scheduler->wait(group_);
    }

private:
    std::weak_ptr<VirtualScheduler> scheduler_;
    VirtualScheduler::Group group_;
};

}  // namespace vantix
