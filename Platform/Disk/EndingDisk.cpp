#include "Platform/Disk/EndingDisk.h"

#include <system_error>
#include <utility>

namespace vantix {

EndingDisk::EndingDisk(std::shared_ptr<Disk> disk) : GuardedDisk(std::move(disk)) {}

void EndingDisk::endAfter(std::chrono::nanoseconds time) { end_ = Clock::now() + time; }

void EndingDisk::before(const DiskAccess&) {
    auto end = end_.load();
    if (end != Clock::time_point::max() && Clock::now() >= end) {
        throw std::system_error(std::make_error_code(std::errc::operation_canceled));
    }
}

}  // namespace vantix
