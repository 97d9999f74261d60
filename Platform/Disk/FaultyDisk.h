#pragma once

#include "Platform/Disk/GuardedDisk.h"
#include "Platform/Ports/Clock.h"
#include "Platform/Values/WordTable.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>

namespace vantix {

/// How a disk misbehaves.
enum class DiskFault {
    none,
    /// Takes no further byte; removing and reading go on.
    full,
    /// Lets nothing be changed.
    readOnly,
    /// Each call takes longer.
    slow,
};

inline constexpr WordTable<DiskFault, 4> diskFaultWords{{{DiskFault::none, "none"},
                                                         {DiskFault::full, "full"},
                                                         {DiskFault::readOnly, "read-only"},
                                                         {DiskFault::slow, "slow"}}};

/// Another disk that misbehaves on demand, for trying out what a system makes of it. Without a fault it forwards
/// everything. Faults may change at any time, from any thread; calls that are under way end as they began.
class FaultyDisk final : public GuardedDisk {
public:
    /// `wait` takes the time of a slow call; empty: it holds up the calling thread.
    explicit FaultyDisk(std::shared_ptr<Disk> disk, std::function<void(Duration)> wait = {});

    void setFault(DiskFault fault);
    /// Of each call of a slow disk; 100 milliseconds at first.
    void setSlowness(Duration perCall);
    /// The call that comes after so many others fails, it alone, with an input/output error.
    void failAfter(std::size_t calls);

    /// How often the disk was used so far.
    std::size_t calls() const { return calls_; }

protected:
    void before(const DiskAccess& access) override;

private:
    static constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

    void failWhereDue();

    std::function<void(Duration)> wait_;
    std::atomic<DiskFault> fault_{DiskFault::none};
    std::atomic<Duration> slowness_{std::chrono::milliseconds(100)};
    std::atomic<std::size_t> calls_{0};
    /// The count at which a fault is due.
    std::atomic<std::size_t> failing_{never};
};

}  // namespace vantix
