#include "VantixCore/Images/ImageCache.h"

#include "Platform/Ports/Disk.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>
#include <system_error>
#include <utility>

namespace vantix {

namespace fs = std::filesystem;

namespace {

constexpr const char* imageEnding = ".image";
constexpr const char* identifiersEnding = ".identifiers";

/// The 64-bit FNV-1a hash in hexadecimal: the same in every process, unlike std::hash.
std::string hashText(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (char character : text) hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3;
    std::array<char, 16> digits{};
    auto end = std::to_chars(digits.begin(), digits.end(), hash, 16).ptr;
    return {digits.begin(), end};
}

/// What cannot be read is fetched anew, and what cannot be written is said when an image is to be kept.
template <typename Action>
void attempt(Action action) {
    try {
        action();
    } catch (const std::system_error&) {
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

    disk_->makeFolder(folder_);
    disk_->replaceFile(imageFile(name), content);
    add({name, url, {}, content.size(), {}});
    makeRoom();
}

void ImageCache::identify(const std::string& url, const std::string& identifier) {
    open();
    auto entry = withURL(url);
    bool isOneLine = !identifier.empty() && identifier.find('\n') == std::string::npos;
    if (entry == entries_.end() || !isOneLine || !entry->identifiers.insert(identifier).second) return;

    entry->size += identifier.size() + 1;
    totalSize_ += identifier.size() + 1;
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
        disk_->makeFolder(folder_);
        readFolder();
    });
    entries_.sort([](const Entry& a, const Entry& b) { return a.lastUse < b.lastUse; });
    makeRoom();
}

void ImageCache::readFolder() {
    auto files = disk_->list(folder_);
    for (const auto& file : files) {
        if (file.path.extension() == imageEnding) attempt([&] { readImage(file); });
    }
    for (const auto& file : files) {
        if (file.path.extension() == identifiersEnding) attempt([&] { readIdentifiers(file); });
        if (file.path.extension() == Disk::draftEnding) attempt([&] { disk_->removeFile(file.path); });
    }
}

void ImageCache::readImage(const Disk::Listed& file) {
    auto url = disk_->readFirstLine(file.path, 1U << 16);
    if (url) add({file.path.stem(), *url, {}, file.size, file.lastChange});
}

/// Identifiers without an image lead nowhere.
void ImageCache::readIdentifiers(const Disk::Listed& file) {
    auto entry = std::ranges::find(entries_, file.path.stem().string(), &Entry::name);
    if (entry == entries_.end()) return disk_->removeFile(file.path);
    std::istringstream lines(disk_->readFile(file.path, 1U << 20).value_or(""));
    for (std::string line; std::getline(lines, line);) entry->identifiers.insert(line);
    entry->size += file.size;
    totalSize_ += file.size;
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
    return std::ranges::find_if(entries_, [&](const Entry& entry) { return entry.identifiers.contains(identifier); });
}

fs::path ImageCache::imageFile(const std::string& name) const { return folder_ / (name + imageEnding); }

fs::path ImageCache::identifiersFile(const std::string& name) const { return folder_ / (name + identifiersEnding); }

}  // namespace vantix
