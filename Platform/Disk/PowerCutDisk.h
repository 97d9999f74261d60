#pragma once

#include "Platform/Disk/GuardedDisk.h"

#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vantix {

/// Another disk, over real files, whose power can be cut, for trying out what a system finds afterwards. Until a file
/// is synced any of its writes may be lost or torn, and until its folder is, the last makings, renamings and removals
/// in it. It opens and closes the files that it guards, so no other process should count on locks that this one holds.
class PowerCutDisk final : public GuardedDisk {
public:
    explicit PowerCutDisk(std::shared_ptr<Disk> disk);

    /// From now on every use fails.
    void cutPower();
    /// Once nothing uses the files any more: they become what the machine finds when it starts again. What of the
    /// unsynced is lost is drawn from the seed. Then the disk works as before.
    void restorePower(std::uint32_t seed);

protected:
    void before(const DiskAccess& access) override;

private:
    /// How to undo a use that is not yet safe.
    struct Unsafe {
        DiskUse use = DiskUse::read;
        Path path;
        /// Of the bytes that were there before, and these; absent: there was no file.
        std::uint64_t offset = 0;
        std::optional<std::string> before;
        /// Of the file before.
        std::uint64_t size = 0;
        /// As many bytes as were written.
        std::uint64_t written = 0;
        /// What a renaming made of the name.
        Path newPath;
    };

    void remember(const DiskAccess& access);
    void forgetContent(const Path& file);
    void makeSafe(const Path& path);
    static void undo(const Unsafe& unsafe, std::uint64_t kept);
    static void undoWrite(const Unsafe& unsafe, std::uint64_t begin);

    std::mutex mutex_;
    bool isCut_ = false;
    /// In the order of the uses.
    std::list<Unsafe> unsafe_;
};

}  // namespace vantix
