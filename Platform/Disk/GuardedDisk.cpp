#include "Platform/Disk/GuardedDisk.h"

#include <utility>

namespace vantix {

GuardedDisk::GuardedDisk(std::shared_ptr<Disk> disk) : disk_(std::move(disk)) {}

std::optional<std::string> GuardedDisk::readFile(const Path& file, std::uintmax_t largest) {
    before({DiskUse::read, file.native()});
    return disk_->readFile(file, largest);
}

std::optional<std::string> GuardedDisk::readFirstLine(const Path& file, std::size_t longest) {
    before({DiskUse::read, file.native()});
    return disk_->readFirstLine(file, longest);
}

bool GuardedDisk::exists(const Path& path) {
    before({DiskUse::read, path.native()});
    return disk_->exists(path);
}

std::vector<Disk::Listed> GuardedDisk::list(const Path& folder) {
    before({DiskUse::read, folder.native()});
    return disk_->list(folder);
}

void GuardedDisk::makeFolder(const Path& folder) {
    beforeMaking(folder);
    disk_->makeFolder(folder);
}

void GuardedDisk::hideFolder(const Path& folder) {
    before({DiskUse::read, folder.native()});
    disk_->hideFolder(folder);
}

void GuardedDisk::makeFile(const Path& file) {
    beforeMaking(file);
    disk_->makeFile(file);
}

void GuardedDisk::hideFile(const Path& file) {
    before({DiskUse::read, file.native()});
    disk_->hideFile(file);
}

void GuardedDisk::writeFile(const Path& file, std::string_view content) {
    before({DiskUse::make, file.native()});
    before({DiskUse::write, file.native(), 0, content.size()});
    disk_->writeFile(file, content);
}

void GuardedDisk::syncFile(const Path& file) {
    before({DiskUse::sync, file.native()});
    disk_->syncFile(file);
}

void GuardedDisk::syncFolder(const Path& folder) {
    before({DiskUse::sync, folder.native()});
    disk_->syncFolder(folder);
}

void GuardedDisk::touchFile(const Path& file) {
    before({DiskUse::touch, file.native()});
    disk_->touchFile(file);
}

void GuardedDisk::renameFile(const Path& from, const Path& to) {
    before({.use = DiskUse::rename, .path = from.native(), .newPath = to.native()});
    disk_->renameFile(from, to);
}

void GuardedDisk::removeFile(const Path& file) {
    before({DiskUse::remove, file.native()});
    disk_->removeFile(file);
}

void GuardedDisk::admit(const DiskAccess& access) {
    before(access);
    disk_->admit(access);
}

void GuardedDisk::beforeMaking(const Path& path) {
    before({DiskUse::read, path.native()});
    if (!disk_->exists(path)) before({DiskUse::make, path.native()});
}

}  // namespace vantix
