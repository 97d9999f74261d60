#pragma once

#include "Platform/Ports/Disk.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// Encoded images in a folder, bounded in bytes; those used least recently go first. One thread at a time.
///
/// Each image is a file "HASH.image": its URL, a line break, its bytes; beside it "HASH.identifiers" lists the
/// identifiers that lead to it, a line each. An image appears by renaming a finished file, and everything that is known
/// of the images is read from the folder, so a process that dies at any moment leaves a sound cache behind. Its time of
/// modification is the time of its last use. Only this user may read the folder. What stands in it under such names and
/// is no file is set aside, and a damaged file removed; both are logged.
class ImageCache {
public:
    /// The folder is made or read at the first operation.
    ImageCache(std::shared_ptr<Disk> disk, std::filesystem::path folder, std::uintmax_t capacity);

    /// The image's bytes; counts as a use. An identifier is only asked when the URL is absent or unknown.
    std::optional<std::string> find(const std::optional<std::string>& url,
                                    const std::optional<std::string>& identifier);

    /// Keeps an image, unless it alone is larger than the capacity. Throws std::system_error when the disk refuses.
    void insert(const std::string& url, std::string_view bytes);
    /// Lets the identifier lead to an image that is kept. Of many, the latest do.
    void identify(const std::string& url, const std::string& identifier);

    /// Forgets what `find` would find.
    void remove(const std::optional<std::string>& url, const std::optional<std::string>& identifier);
    void removeAll();

private:
    struct Entry {
        /// Of its files, without their endings.
        std::string name;
        std::string url;
        /// The latest at the end.
        std::deque<std::string> identifiers;
        /// Of its files together.
        std::uintmax_t size = 0;
        std::filesystem::file_time_type lastUse;
    };
    /// The one used last stands at the end.
    using Entries = std::list<Entry>;

    void open();
    void makeFolder();
    void readFolder();
    bool isUsable(const Disk::Listed& file);
    void setAside(const std::filesystem::path& path, const char* reason);
    /// Runs a read that tells whether the file is sound, and removes one that is not.
    template <typename Read>
    void read(const Disk::Listed& file, Read read);
    bool readImage(const Disk::Listed& file);
    bool readIdentifiers(const Disk::Listed& file);
    void writeIdentifiers(const Entry& entry);
    void add(Entry entry);
    /// Absent when the image's file is not what it was.
    std::optional<std::string> readBytes(const Entry& entry);
    void makeRoom();
    void erase(Entries::iterator entry);

    Entries::iterator locate(const std::optional<std::string>& url, const std::optional<std::string>& identifier);
    Entries::iterator withURL(const std::string& url);
    Entries::iterator withIdentifier(const std::string& identifier);
    std::filesystem::path imageFile(const std::string& name) const;
    std::filesystem::path identifiersFile(const std::string& name) const;

    std::shared_ptr<Disk> disk_;
    std::filesystem::path folder_;
    std::uintmax_t capacity_;
    bool isOpen_ = false;
    Entries entries_;
    std::uintmax_t totalSize_ = 0;
};

}  // namespace vantix
