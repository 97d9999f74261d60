#include "VantixCore/Images/ImageCache.h"

#include "Platform/Ports/Disk.h"
#include "VantixCore/VantixLogger.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>
#include <system_error>
#include <utility>

namespace vantix {

namespace fs = std::filesystem;

namespace {

constexpr LogSource log{"Images/ImageCache"};
constexpr const char* imageEnding = ".image";
constexpr const char* identifiersEnding = ".identifiers";
/// Bytes.
constexpr std::size_t longestURL = 1U << 16;
constexpr std::uintmax_t largestIdentifiers = 1U << 20;

/// Of one image. Every message brings one of its own.
constexpr std::size_t mostIdentifiers = 32;

bool isIn(const std::deque<std::string>& identifiers, const std::string& identifier) {
    return std::ranges::find(identifiers, identifier) != identifiers.end();
}

/// The 64-bit FNV-1a hash in hexadecimal: the same in every process, unlike std::hash.
std::string hashText(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (char character : text) hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3;
    std::array<char, 16> digits{};
    auto end = std::to_chars(digits.begin(), digits.end(), hash, 16).ptr;
    return {digits.begin(), end};
}

bool isOurs(const fs::path& file) {
    auto ending = file.extension();
    return ending == imageEnding || ending == identifiersEnding || ending == Disk::draftEnding;
}

/// What cannot be read is fetched anew, and what cannot be written is said when an image is to be kept.
template <typename Action>
void attempt(Action action) {
    try {
        action();
    } catch (const std::system_error&) {
    }
}

/// The same where nothing else would tell of it.
template <typename Action>
void attemptLoudly(const char* function, Action action) {
    try {
        action();
    } catch (const std::system_error& problem) {
        log.error(function, [&] { return std::string("The image cache met an error: ") + problem.what(); });
    }
}

}  // namespace

ImageCache::ImageCache(std::shared_ptr<Disk> disk, fs::path folder, std::uintmax_t capacity)
    : disk_(std::move(disk)), folder_(std::move(folder)), capacity_(capacity) {}

std::optional<std::string> ImageCache::find(const std::optional<std::string>& url,
                                            const std::optional<std::string>& identifier) {
    open();
    auto entry = locate(url, identifier);
    if (entry == entries_.end()) return {};

    auto bytes = readBytes(*entry);
    if (!bytes) {
        erase(entry);
        return {};
    }
    attempt([&] { disk_->touchFile(imageFile(entry->name)); });
    entries_.splice(entries_.end(), entries_, entry);
    return bytes;
}

void ImageCache::insert(const std::string& url, std::string_view bytes) {
    open();
    std::string name = hashText(url);
    auto old = std::ranges::find(entries_, name, &Entry::name);
    if (old != entries_.end()) erase(old);
    std::string content = url + "\n";
    content += bytes;
    if (content.size() > capacity_) return;

    makeFolder();
    disk_->replaceFile(imageFile(name), content);
    add({name, url, {}, content.size(), {}});
    makeRoom();
}

void ImageCache::identify(const std::string& url, const std::string& identifier) {
    open();
    auto entry = withURL(url);
    bool isOneLine = !identifier.empty() && identifier.find('\n') == std::string::npos;
    if (entry == entries_.end() || !isOneLine || isIn(entry->identifiers, identifier)) return;

    totalSize_ -= entry->size;
    entry->size += identifier.size() + 1;
    entry->identifiers.push_back(identifier);
    for (auto& known = entry->identifiers; known.size() > mostIdentifiers; known.pop_front()) {
        entry->size -= known.front().size() + 1;
    }
    totalSize_ += entry->size;
    attempt([&] { writeIdentifiers(*entry); });
    makeRoom();
}

void ImageCache::remove(const std::optional<std::string>& url, const std::optional<std::string>& identifier) {
    open();
    if (auto entry = locate(url, identifier); entry != entries_.end()) erase(entry);
}

void ImageCache::removeAll() {
    open();
    while (!entries_.empty()) erase(entries_.begin());
}

void ImageCache::open() {
    if (std::exchange(isOpen_, true)) return;
    attempt([&] {
        makeFolder();
        attemptLoudly("open()", [&] { readFolder(); });
    });
    entries_.sort([](const Entry& a, const Entry& b) { return a.lastUse < b.lastUse; });
    makeRoom();
}

/// The folder above it is looked at as well, since the folder's own path leads through it.
void ImageCache::makeFolder() {
    disk_->makeFolder(folder_.parent_path());
    try {
        disk_->makeFolder(folder_);
    } catch (const OddFile& odd) {
        setAside(folder_, odd.what());
        disk_->makeFolder(folder_);
    }
    disk_->hideFolder(folder_);
}

void ImageCache::readFolder() {
    auto listed = disk_->list(folder_);
    std::erase_if(listed, [&](const auto& file) { return !isOurs(file.path) || !isUsable(file); });
    for (const auto& file : listed) {
        if (file.path.extension() == imageEnding) read(file, [&] { return readImage(file); });
    }
    for (const auto& file : listed) {
        if (file.path.extension() == identifiersEnding) read(file, [&] { return readIdentifiers(file); });
        if (file.path.extension() == Disk::draftEnding) attempt([&] { disk_->removeFile(file.path); });
    }
}

bool ImageCache::isUsable(const Disk::Listed& file) {
    if (!file.isFile) attemptLoudly("open()", [&] { setAside(file.path, "it is no file"); });
    return file.isFile;
}

void ImageCache::setAside(const fs::path& path, const char* reason) {
    auto name = disk_->setAside(path);
    log.error("setAside(path:reason:)", [&] {
        return path.filename().string() + " of the image cache is damaged (" + reason + ") and was set aside as " +
               name.filename().string() + ".";
    });
}

/// What a file of the cache holds came from a server and can be had again.
template <typename Read>
void ImageCache::read(const Disk::Listed& file, Read read) {
    attemptLoudly("open()", [&] {
        try {
            if (read()) return;
        } catch (const OddFile&) {
        }
        disk_->removeFile(file.path);
        log.error("open()",
                  [&] { return file.path.filename().string() + " of the image cache was damaged and is gone."; });
    });
}

bool ImageCache::readImage(const Disk::Listed& file) {
    auto url = disk_->readFirstLine(file.path, longestURL);
    if (!url || file.path.stem() != hashText(*url)) return false;
    add({file.path.stem(), *url, {}, file.size, file.lastChange});
    return true;
}

/// Identifiers without an image lead nowhere.
bool ImageCache::readIdentifiers(const Disk::Listed& file) {
    auto lines = disk_->readFile(file.path, largestIdentifiers);
    auto entry = std::ranges::find(entries_, file.path.stem().string(), &Entry::name);
    if (!lines) return true;
    if (entry == entries_.end()) return disk_->removeFile(file.path), true;
    std::istringstream stream(*lines);
    for (std::string line; std::getline(stream, line);) entry->identifiers.push_back(line);
    entry->size += file.size;
    totalSize_ += file.size;
    return true;
}

void ImageCache::writeIdentifiers(const Entry& entry) {
    std::string lines;
    for (const auto& identifier : entry.identifiers) lines += identifier + '\n';
    disk_->replaceFile(identifiersFile(entry.name), lines);
}

void ImageCache::add(Entry entry) {
    totalSize_ += entry.size;
    entries_.push_back(std::move(entry));
}

std::optional<std::string> ImageCache::readBytes(const Entry& entry) {
    std::optional<std::string> bytes;
    attempt([&] { bytes = disk_->readFile(imageFile(entry.name), capacity_); });
    if (!bytes || !bytes->starts_with(entry.url + '\n')) return {};
    return bytes->erase(0, entry.url.size() + 1);
}

void ImageCache::makeRoom() {
    while (totalSize_ > capacity_) erase(entries_.begin());
}

void ImageCache::erase(Entries::iterator entry) {
    attempt([&] {
        disk_->removeFile(imageFile(entry->name));
        disk_->removeFile(identifiersFile(entry->name));
    });
    totalSize_ -= entry->size;
    entries_.erase(entry);
}

ImageCache::Entries::iterator ImageCache::locate(const std::optional<std::string>& url,
                                                 const std::optional<std::string>& identifier) {
    auto entry = url ? withURL(*url) : entries_.end();
    return entry == entries_.end() && identifier ? withIdentifier(*identifier) : entry;
}

ImageCache::Entries::iterator ImageCache::withURL(const std::string& url) {
    return std::ranges::find(entries_, url, &Entry::url);
}

ImageCache::Entries::iterator ImageCache::withIdentifier(const std::string& identifier) {
    return std::ranges::find_if(entries_, [&](const Entry& entry) { return isIn(entry.identifiers, identifier); });
}

fs::path ImageCache::imageFile(const std::string& name) const { return folder_ / (name + imageEnding); }

fs::path ImageCache::identifiersFile(const std::string& name) const { return folder_ / (name + identifiersEnding); }

}  // namespace vantix
