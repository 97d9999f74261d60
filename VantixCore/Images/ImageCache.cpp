#include "VantixCore/Images/ImageCache.h"

#include "VantixCore/PrivateFiles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace vantix {

namespace fs = std::filesystem;

namespace {

constexpr const char* imageEnding = ".image";
constexpr const char* identifiersEnding = ".identifiers";
/// Of what replacePrivateFile had not finished when its process ended.
constexpr const char* draftEnding = ".new";

/// The 64-bit FNV-1a hash in hexadecimal: the same in every process, unlike std::hash.
std::string hashText(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (char character : text) hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3;
    std::array<char, 16> digits{};
    auto end = std::to_chars(digits.begin(), digits.end(), hash, 16).ptr;
    return {digits.begin(), end};
}

std::string lineOf(std::istream& stream) {
    std::string line;
    std::getline(stream, line);
    return line;
}

std::uintmax_t sizeOf(const fs::path& file) {
    std::error_code error;
    std::uintmax_t size = fs::file_size(file, error);
    return error ? 0 : size;
}

/// The file's content after its first line.
std::optional<std::string> readBytes(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string url = lineOf(stream);
    std::uintmax_t size = sizeOf(file);
    if (!stream || size < url.size() + 1) return {};
    std::string bytes(size - url.size() - 1, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream) return {};
    return bytes;
}

/// Whether these are identifiers without an image.
bool isOrphan(const fs::path& file) {
    std::error_code ignored;
    return file.extension() == identifiersEnding && !fs::exists(fs::path(file).replace_extension(imageEnding), ignored);
}

std::set<std::string> readIdentifiers(const fs::path& file) {
    std::ifstream stream(file);
    std::set<std::string> identifiers;
    for (std::string line; std::getline(stream, line);) identifiers.insert(line);
    return identifiers;
}

}  // namespace

ImageCache::ImageCache(fs::path folder, std::uintmax_t capacity) : folder_(std::move(folder)), capacity_(capacity) {}

std::optional<std::string> ImageCache::find(const std::optional<std::string>& url,
                                            const std::optional<std::string>& identifier) {
    open();
    auto entry = locate(url, identifier);
    if (entry == entries_.end()) return {};

    auto bytes = readBytes(imageFile(entry->name));
    if (!bytes) {
        erase(entry);
        return {};
    }
    std::error_code ignored;
    fs::last_write_time(imageFile(entry->name), fs::file_time_type::clock::now(), ignored);
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

    replacePrivateFile(imageFile(name), content);
    readEntry(name);
    makeRoom();
}

void ImageCache::identify(const std::string& url, const std::string& identifier) {
    open();
    auto entry = withURL(url);
    bool isOneLine = !identifier.empty() && identifier.find('\n') == std::string::npos;
    if (entry == entries_.end() || !isOneLine || !entry->identifiers.insert(identifier).second) return;

    std::ofstream(identifiersFile(entry->name), std::ios::app) << identifier << '\n';
    entry->size += identifier.size() + 1;
    totalSize_ += identifier.size() + 1;
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
    try {
        makePrivateDirectory(folder_);
        readFolder();
    } catch (const fs::filesystem_error&) {
        // What could not be read is fetched anew, and what cannot be written is said at the first attempt.
    }
    entries_.sort([](const Entry& a, const Entry& b) { return a.lastUse < b.lastUse; });
    makeRoom();
}

void ImageCache::readFolder() {
    for (const auto& file : fs::directory_iterator(folder_)) {
        const fs::path& path = file.path();
        if (path.extension() == imageEnding) {
            readEntry(path.stem());
        } else if (path.extension() == draftEnding || isOrphan(path)) {
            fs::remove(path);
        }
    }
}

void ImageCache::readEntry(const std::string& name) {
    fs::path file = imageFile(name);
    std::ifstream stream(file, std::ios::binary);
    std::error_code error;
    Entry entry{name, lineOf(stream), readIdentifiers(identifiersFile(name)),
                sizeOf(file) + sizeOf(identifiersFile(name)), fs::last_write_time(file, error)};
    totalSize_ += entry.size;
    entries_.push_back(std::move(entry));
}

void ImageCache::makeRoom() {
    while (totalSize_ > capacity_) erase(entries_.begin());
}

void ImageCache::erase(Entries::iterator entry) {
    std::error_code ignored;
    fs::remove(imageFile(entry->name), ignored);
    fs::remove(identifiersFile(entry->name), ignored);
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
