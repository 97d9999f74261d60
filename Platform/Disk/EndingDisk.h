#pragma once

#include "Platform/Disk/GuardedDisk.h"

#include <atomic>
#include <chrono>
#include <memory>

namespace vantix {

/// Another disk whose use ends at some moment: from then on every use is refused at once, so that nobody who has to end
/// waits for a slow one.
class EndingDisk final : public GuardedDisk {
public:
    explicit EndingDisk(std::shared_ptr<Disk> disk);

    /// Any thread.
    void endAfter(std::chrono::nanoseconds time);

protected:
    void before(const DiskAccess& access) override;

private:
    using Clock = std::chrono::steady_clock;

    std::atomic<Clock::time_point> end_{Clock::time_point::max()};
};

}  // namespace vantix
