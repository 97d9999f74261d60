#include "Platform/Disk/FaultyDisk.h"

#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace vantix {

namespace {

void holdUp(Duration time) { std::this_thread::sleep_for(time); }

}  // namespace

FaultyDisk::FaultyDisk(std::shared_ptr<Disk> disk, std::function<void(Duration)> wait)
    : disk_(std::move(disk)), wait_(wait ? std::move(wait) : holdUp) {}

void FaultyDisk::setFault(DiskFault fault) { fault_ = fault; }

std::optional<std::string> FaultyDisk::readFile(const Path& file) {
    admit(DiskUse::read);
    return disk_->readFile(file);
}

std::optional<std::string> FaultyDisk::readFirstLine(const Path& file) {
    admit(DiskUse::read);
    return disk_->readFirstLine(file);
}

bool FaultyDisk::exists(const Path& file) {
    admit(DiskUse::read);
    return disk_->exists(file);
}

std::vector<Disk::ListedFile> FaultyDisk::filesIn(const Path& folder) {
    admit(DiskUse::read);
    return disk_->filesIn(folder);
}

void FaultyDisk::makeFolder(const Path& folder) {
    admitMaking(folder);
    disk_->makeFolder(folder);
}

void FaultyDisk::makeFile(const Path& file) {
    admitMaking(file);
    disk_->makeFile(file);
}

void FaultyDisk::replaceFile(const Path& file, std::string_view content) {
    admit(DiskUse::grow);
    disk_->replaceFile(file, content);
}

void FaultyDisk::touchFile(const Path& file) {
    admit(DiskUse::change);
    disk_->touchFile(file);
}

void FaultyDisk::renameFile(const Path& from, const Path& to) {
    admit(DiskUse::change);
    disk_->renameFile(from, to);
}

void FaultyDisk::removeFile(const Path& file) {
    admit(DiskUse::change);
    disk_->removeFile(file);
}

void FaultyDisk::admit(DiskUse use) {
    auto refuse = [](std::errc reason) { throw std::system_error(std::make_error_code(reason)); };
    switch (fault_.load()) {
        case DiskFault::none:
            break;
        case DiskFault::full:
            if (use == DiskUse::grow) refuse(std::errc::no_space_on_device);
            break;
        case DiskFault::readOnly:
            if (use != DiskUse::read) refuse(std::errc::read_only_file_system);
            break;
        case DiskFault::slow:
            wait_(std::chrono::milliseconds(100));
            break;
    }
    disk_->admit(use);
}

void FaultyDisk::admitMaking(const Path& path) { admit(disk_->exists(path) ? DiskUse::read : DiskUse::grow); }

}  // namespace vantix
