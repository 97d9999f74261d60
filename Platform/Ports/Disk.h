#pragma once

#include "Platform/Values/Export.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// What a use of the disk asks of it.
enum class DiskUse {
    read,
    /// Changes what is there, or removes it, without taking more room.
    change,
    /// Makes files or puts more into them.
    grow,
};

/// The files of this system. What it makes may be read by this user alone. Usable from any thread; two writers of one
/// file must not overlap. Every operation waits for the disk, so none belongs on the main thread, and throws
/// std::system_error when the disk refuses, with the system's own code (ENOSPC, EROFS, …).
class VANTIX_EXPORT Disk {
public:
    using Path = std::filesystem::path;
    using Time = std::filesystem::file_time_type;

    /// A file as its folder lists it.
    struct ListedFile {
        Path path;
        /// Bytes.
        std::uintmax_t size = 0;
        Time lastChange;
    };

    virtual ~Disk() = default;

    /// The content of a file; absent when there is none.
    virtual std::optional<std::string> readFile(const Path& file) = 0;
    /// The beginning of a file up to its first line break, or all when it has none; absent when there is no file.
    virtual std::optional<std::string> readFirstLine(const Path& file) = 0;
    virtual bool exists(const Path& file) = 0;
    /// The regular files that stand directly in the folder, in no order. A folder that is missing is an error.
    virtual std::vector<ListedFile> filesIn(const Path& folder) = 0;

    /// Makes the folder and those above it when missing.
    virtual void makeFolder(const Path& folder) = 0;
    /// Makes an empty file when it is missing, and hides it from other users when it is there.
    virtual void makeFile(const Path& file) = 0;
    /// Replaces the whole file at once: whoever reads it, even after a crash, finds the old content or the new one.
    /// Until then the new one stands beside it, under its name with `draftEnding`.
    virtual void replaceFile(const Path& file, std::string_view content) = 0;
    /// The time of the file's last change becomes now.
    virtual void touchFile(const Path& file) = 0;
    virtual void renameFile(const Path& from, const Path& to) = 0;
    /// Nothing to remove is no error.
    virtual void removeFile(const Path& file) = 0;

    /// For a library that reaches its files by itself, as a database does: asked before each use, returns when the disk
    /// lets it pass.
    virtual void admit(DiskUse use) = 0;

    static constexpr const char* draftEnding = ".new";
};

}  // namespace vantix
