#pragma once

#include "Platform/Ports/Disk.h"

namespace vantix {

/// The disk of the machine.
class FileDisk final : public Disk {
public:
    std::optional<std::string> readFile(const Path& file, std::uintmax_t largest) override;
    std::optional<std::string> readFirstLine(const Path& file, std::size_t longest) override;
    bool exists(const Path& path) override;
    std::vector<Listed> list(const Path& folder) override;

    void makeFolder(const Path& folder) override;
    void hideFolder(const Path& folder) override;
    void makeFile(const Path& file) override;
    void hideFile(const Path& file) override;
    void writeFile(const Path& file, std::string_view content) override;
    void syncFile(const Path& file) override;
    void syncFolder(const Path& folder) override;
    void touchFile(const Path& file) override;
    void renameFile(const Path& from, const Path& to) override;
    void removeFile(const Path& file) override;

    void admit(const DiskAccess& access) override;
};

}  // namespace vantix
