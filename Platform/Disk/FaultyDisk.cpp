#include "Platform/Disk/FaultyDisk.h"

#include <system_error>
#include <thread>
#include <utility>

namespace vantix {

namespace {

void holdUp(Duration time) { std::this_thread::sleep_for(time); }

[[noreturn]] void refuse(std::errc reason) { throw std::system_error(std::make_error_code(reason)); }

}  // namespace

FaultyDisk::FaultyDisk(std::shared_ptr<Disk> disk, std::function<void(Duration)> wait)
    : GuardedDisk(std::move(disk)), wait_(wait ? std::move(wait) : holdUp) {}

void FaultyDisk::setFault(DiskFault fault) { fault_ = fault; }

void FaultyDisk::setSlowness(Duration perCall) { slowness_ = perCall; }

void FaultyDisk::failAfter(std::size_t calls) { failing_ = calls_ + calls; }

void FaultyDisk::before(const DiskAccess& access) {
    failWhereDue();
    switch (fault_.load()) {
        case DiskFault::none:
            break;
        case DiskFault::full:
            if (takesRoom(access.use)) refuse(std::errc::no_space_on_device);
            break;
        case DiskFault::readOnly:
            if (changesDisk(access.use)) refuse(std::errc::read_only_file_system);
            break;
        case DiskFault::slow:
            wait_(slowness_);
            break;
    }
}

void FaultyDisk::failWhereDue() {
    if (calls_++ == failing_) refuse(std::errc::io_error);
}

}  // namespace vantix
