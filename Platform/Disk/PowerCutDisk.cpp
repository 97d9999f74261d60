#include "Platform/Disk/PowerCutDisk.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <utility>

namespace vantix {

namespace fs = std::filesystem;

namespace {

/// What a disk writes at once.
constexpr std::uint64_t sectorSize = 512;

bool changesContent(DiskUse use) { return use == DiskUse::write || use == DiskUse::truncate; }

std::uint64_t sizeOf(const fs::path& file) {
    std::error_code none;
    auto size = fs::file_size(file, none);
    return none ? 0 : size;
}

std::optional<std::string> bytesOf(const fs::path& file, std::uint64_t offset, std::uint64_t size) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return {};
    std::string bytes(size, '\0');
    stream.seekg(static_cast<std::streamoff>(offset)).read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

void overwrite(const fs::path& file, std::uint64_t offset, std::string_view bytes) {
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(static_cast<std::streamoff>(offset)).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

PowerCutDisk::PowerCutDisk(std::shared_ptr<Disk> disk) : GuardedDisk(std::move(disk)) {}

void PowerCutDisk::cutPower() {
    std::lock_guard lock(mutex_);
    isCut_ = true;
}

/// A later change that is lost is undone before an earlier one. Of the names' changes the last are lost.
void PowerCutDisk::restorePower(std::uint32_t seed) {
    std::lock_guard lock(mutex_);
    std::mt19937 random(seed);
    auto drawn = [&](std::uint64_t most) { return std::uniform_int_distribution<std::uint64_t>(0, most)(random); };
    bool losesNames = true;
    for (auto unsafe = unsafe_.rbegin(); unsafe != unsafe_.rend(); ++unsafe) {
        if (changesContent(unsafe->use)) {
            undo(*unsafe, drawn(unsafe->written / sectorSize + 1) * sectorSize);
        } else if (losesNames &= drawn(2) > 0) {
            undo(*unsafe, 0);
        }
    }
    unsafe_.clear();
    isCut_ = false;
}

void PowerCutDisk::before(const DiskAccess& access) {
    std::lock_guard lock(mutex_);
    if (isCut_) throw std::system_error(std::make_error_code(std::errc::io_error));
    if (access.use == DiskUse::sync) {
        makeSafe(access.path);
    } else if (changesDisk(access.use) && access.use != DiskUse::touch) {
        remember(access);
    }
}

void PowerCutDisk::remember(const DiskAccess& access) {
    Unsafe unsafe;
    unsafe.use = access.use;
    unsafe.path = access.path;
    unsafe.newPath = access.newPath;
    unsafe.offset = access.offset;
    unsafe.size = sizeOf(unsafe.path);
    unsafe.written = access.size;
    switch (access.use) {
        case DiskUse::write:
            unsafe.before = bytesOf(unsafe.path, access.offset, access.size);
            break;
        case DiskUse::truncate:
            unsafe.before = bytesOf(unsafe.path, access.offset, unsafe.size - std::min(unsafe.size, access.offset));
            break;
        case DiskUse::remove:
            unsafe.before = bytesOf(unsafe.path, 0, unsafe.size);
            forgetContent(unsafe.path);
            break;
        case DiskUse::rename:
            unsafe.before = bytesOf(unsafe.newPath, 0, sizeOf(unsafe.newPath));
            forgetContent(unsafe.newPath);
            for (auto& earlier : unsafe_) {
                if (changesContent(earlier.use) && earlier.path == unsafe.path) earlier.path = unsafe.newPath;
            }
            break;
        default:
            break;
    }
    unsafe_.push_back(std::move(unsafe));
}

void PowerCutDisk::forgetContent(const Path& file) {
    std::erase_if(unsafe_, [&](const Unsafe& unsafe) { return changesContent(unsafe.use) && unsafe.path == file; });
}

/// A file that is synced has its name for sure, as the usual file systems have it.
void PowerCutDisk::makeSafe(const Path& path) {
    std::erase_if(unsafe_, [&](const Unsafe& unsafe) {
        bool isContent = changesContent(unsafe.use);
        bool isItself = unsafe.path == path && (isContent || unsafe.use == DiskUse::make);
        return isItself || (!isContent && unsafe.path.parent_path() == path);
    });
}

/// From that place on the bytes become what they were before: zeros, or nothing, where the file was shorter.
void PowerCutDisk::undoWrite(const Unsafe& unsafe, std::uint64_t begin) {
    std::uint64_t size = sizeOf(unsafe.path);
    std::uint64_t end = std::min(unsafe.offset + unsafe.written, size);
    if (begin >= end) return;
    std::string bytes = unsafe.before.value_or("");
    bytes.resize(end - unsafe.offset, '\0');
    overwrite(unsafe.path, begin, std::string_view(bytes).substr(begin - unsafe.offset));
    std::error_code ignored;
    if (size == end) fs::resize_file(unsafe.path, std::min(size, std::max(unsafe.size, begin)), ignored);
}

/// `kept`: how many bytes of a write have come through.
void PowerCutDisk::undo(const Unsafe& unsafe, std::uint64_t kept) {
    const Path& file = unsafe.path;
    std::error_code ignored;
    switch (unsafe.use) {
        case DiskUse::write:
            undoWrite(unsafe, unsafe.offset + std::min(kept, unsafe.written));
            break;
        case DiskUse::truncate:
            if (kept == 0 && sizeOf(file) < unsafe.size) overwrite(file, unsafe.offset, unsafe.before.value_or(""));
            break;
        case DiskUse::make:
            fs::remove(file, ignored);
            break;
        case DiskUse::remove:
            if (unsafe.before) std::ofstream(file, std::ios::binary) << *unsafe.before;
            break;
        case DiskUse::rename:
            fs::rename(unsafe.newPath, file, ignored);
            if (unsafe.before) std::ofstream(unsafe.newPath, std::ios::binary) << *unsafe.before;
            break;
        default:
            break;
    }
}

}  // namespace vantix
