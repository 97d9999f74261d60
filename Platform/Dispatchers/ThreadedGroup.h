#pragma once

#include "Platform/Dispatchers/UtilityQueue.h"
#include "Platform/Ports/DispatchGroup.h"

#include <condition_variable>
#include <mutex>

namespace vantix {

/// Tells the utility queue when one of its threads waits. Both queues must outlive the waits.
class ThreadedGroup final : public DispatchGroup {
public:
    ThreadedGroup(const DispatchQueue& main, UtilityQueue& utility) : main_(main), utility_(utility) {}

    void enter() override;
    void leave() override;
    void wait() override;

private:
    const DispatchQueue& main_;
    UtilityQueue& utility_;
    std::mutex mutex_;
    std::condition_variable empty_;
    int count_ = 0;
};

}  // namespace vantix
