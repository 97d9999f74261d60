#pragma once

#include "Platform/Ports/Disk.h"

#include <memory>

namespace vantix {

/// Another disk, with a say before each of its uses: what `before` throws is what the user of the disk meets.
class GuardedDisk : public Disk {
public:
    std::optional<std::string> readFile(const Path& file, std::uintmax_t largest) final;
    std::optional<std::string> readFirstLine(const Path& file, std::size_t longest) final;
    bool exists(const Path& path) final;
    std::vector<Listed> list(const Path& folder) final;

    void makeFolder(const Path& folder) final;
    void hideFolder(const Path& folder) final;
    void makeFile(const Path& file) final;
    void hideFile(const Path& file) final;
    void writeFile(const Path& file, std::string_view content) final;
    void syncFile(const Path& file) final;
    void syncFolder(const Path& folder) final;
    void touchFile(const Path& file) final;
    void renameFile(const Path& from, const Path& to) final;
    void removeFile(const Path& file) final;

    void admit(const DiskAccess& access) final;

protected:
    explicit GuardedDisk(std::shared_ptr<Disk> disk);

    /// Any thread.
    virtual void before(const DiskAccess& access) = 0;

private:
    /// What is there already need not be made.
    void beforeMaking(const Path& path);

    std::shared_ptr<Disk> disk_;
};

}  // namespace vantix
