#pragma once

#include "Platform/Dispatchers/VirtualScheduler.h"
#include "Platform/Ports/DispatchGroup.h"
#include "Platform/Ports/RunningQueue.h"

#include <memory>
#include <utility>

namespace vantix {

/// A group in virtual time. Once its scheduler is gone nobody waits.
class VirtualGroup final : public DispatchGroup {
public:
    /// The queue must outlive the waits.
    VirtualGroup(const DispatchQueue& main, std::weak_ptr<VirtualScheduler> scheduler)
        : main_(main), scheduler_(std::move(scheduler)) {}

    void enter() override {
        if (auto scheduler = scheduler_.lock()) scheduler->enter(group_);
    }
    void leave() override {
        if (auto scheduler = scheduler_.lock()) scheduler->leave(group_);
    }
    void wait() override {
        auto scheduler = scheduler_.lock();
        if (!scheduler) return;
        assertNotOnQueue(main_, "DispatchGroup::wait");
        scheduler->wait(group_);
    }

private:
    const DispatchQueue& main_;
    std::weak_ptr<VirtualScheduler> scheduler_;
    VirtualScheduler::Group group_;
};

}  // namespace vantix
