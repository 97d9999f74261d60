#pragma once

#include "Platform/Values/Export.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace vantix {

/// What is done to a file or a folder.
enum class DiskUse { read, make, write, truncate, touch, sync, rename, remove };

/// Whether it puts more onto the disk.
constexpr bool takesRoom(DiskUse use) { return use == DiskUse::make || use == DiskUse::write; }
constexpr bool changesDisk(DiskUse use) { return use != DiskUse::read; }

/// One use of a disk.
struct DiskAccess {
    DiskUse use = DiskUse::read;
    std::string_view path;
    /// Of a write: where it begins. Of a truncation: the size that is left.
    std::uint64_t offset = 0;
    /// Of a write, in bytes.
    std::uint64_t size = 0;
    /// Of a renaming.
    std::string_view newPath = {};
};

/// What stands where a file should is none that may be used: a folder, a pipe, a device, a link, one that is larger
/// than it can be or that this user may not read.
class VANTIX_EXPORT OddFile : public std::system_error {
public:
    /// The words continue "… is ".
    OddFile(const std::filesystem::path& file, std::string_view oddity);

    const char* what() const noexcept override { return text_.c_str(); }

private:
    std::string text_;
};

/// The files of this system. Whatever it makes only this user may read, whatever the umask; a link in place of a file
/// or of its folder is never followed. Usable from any thread; two writers of one file must not overlap. Every
/// operation waits for the disk, so none belongs on the main thread, and throws std::system_error when the disk
/// refuses, with the system's own code (ENOSPC, EROFS, …), OddFile among them. No operation waits for anything but the
/// disk: not for the other end of a pipe, say.
class VANTIX_EXPORT Disk {
public:
    using Path = std::filesystem::path;
    using Time = std::filesystem::file_time_type;

    /// What stands under a name in a folder.
    struct Listed {
        Path path;
        /// Whether it is a file, rather than a folder, a link or the like.
        bool isFile = true;
        /// Bytes.
        std::uintmax_t size = 0;
        Time lastChange;
    };

    virtual ~Disk() = default;

    /// The content of a file of at most so many bytes; absent when nothing stands there.
    virtual std::optional<std::string> readFile(const Path& file, std::uintmax_t largest) = 0;
    /// The beginning of a file up to its first line break, which must come within so many bytes; absent without one.
    virtual std::optional<std::string> readFirstLine(const Path& file, std::size_t longest) = 0;
    /// Whether anything stands there, be it a link that leads nowhere.
    virtual bool exists(const Path& path) = 0;
    /// What stands directly in the folder, in no order. A folder that is missing is an error.
    virtual std::vector<Listed> list(const Path& folder) = 0;

    /// Makes the folder and those above it when missing. OddFile when something else than a folder stands there.
    virtual void makeFolder(const Path& folder) = 0;
    /// Hides a folder of this user's from others, and opens it to this one.
    virtual void hideFolder(const Path& folder) = 0;
    /// Makes an empty file when nothing stands there; hides what does. Does not open it.
    virtual void makeFile(const Path& file) = 0;
    /// Hides a file from other users when there is one, without opening it. OddFile also when this user may not use it.
    virtual void hideFile(const Path& file) = 0;
    /// Makes a file with that content; an error when anything stands there.
    virtual void writeFile(const Path& file, std::string_view content) = 0;
    /// Returns when the content of the file is safe from a loss of power.
    virtual void syncFile(const Path& file) = 0;
    /// Returns when the names in the folder are.
    virtual void syncFolder(const Path& folder) = 0;
    /// The time of the file's last change becomes now.
    virtual void touchFile(const Path& file) = 0;
    /// Replaces what stands under the new name, unless that is a folder.
    virtual void renameFile(const Path& from, const Path& to) = 0;
    /// Whatever it is but a folder with something in it. Nothing to remove is no error.
    virtual void removeFile(const Path& file) = 0;

    /// For a library that reaches its files by itself, as a database does: asked before each use, returns when the disk
    /// lets it pass.
    virtual void admit(const DiskAccess& access) = 0;

    /// Replaces the whole file at once: whoever reads it, even after a loss of power, finds the old content or the new
    /// one. Until then the new one stands beside it, under its name with `draftEnding`.
    void replaceFile(const Path& file, std::string_view content);
    /// Gives what stands there the first free name of "NAME.damaged-1", "NAME.damaged-2", …, which it returns.
    Path setAside(const Path& path);
    /// Removes the draft that an interrupted replacement has left, if any.
    void removeDraft(const Path& file);

    static constexpr const char* draftEnding = ".new";
};

}  // namespace vantix
