#pragma once

#include "Platform/Ports/Disk.h"

namespace vantix {

/// The disk of the machine.
class FileDisk final : public Disk {
public:
    std::optional<std::string> readFile(const Path& file) override;
    std::optional<std::string> readFirstLine(const Path& file) override;
    bool exists(const Path& file) override;
    std::vector<ListedFile> filesIn(const Path& folder) override;

    void makeFolder(const Path& folder) override;
    void makeFile(const Path& file) override;
    void replaceFile(const Path& file, std::string_view content) override;
    void touchFile(const Path& file) override;
    void renameFile(const Path& from, const Path& to) override;
    void removeFile(const Path& file) override;

    void admit(DiskUse use) override;
};

}  // namespace vantix
