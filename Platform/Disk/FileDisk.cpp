#include "Platform/Disk/FileDisk.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vantix {

namespace fs = std::filesystem;

namespace {

constexpr mode_t thisUserOnly = S_IRUSR | S_IWUSR;

[[noreturn]] void fail(const char* what, const fs::path& file) {
    throw std::system_error(errno, std::generic_category(), what + file.string());
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (isOpen()) ::close(number_);
    }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

private:
    int number_;
};

/// Reads until the end, or until what has been read is enough.
template <typename Enough>
std::optional<std::string> read(const fs::path& file, Enough enough) {
    Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!descriptor.isOpen()) {
        if (errno == ENOENT || errno == ENOTDIR) return {};
        fail("Cannot read ", file);
    }
    std::string content;
    std::array<char, 16384> piece{};
    while (!enough(content)) {
        ssize_t count = ::read(descriptor.number(), piece.data(), piece.size());
        if (count == 0) break;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail("Cannot read ", file);
        content.append(piece.data(), static_cast<std::size_t>(count));
    }
    return content;
}

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void writeFile(const fs::path& file, std::string_view content) {
    Descriptor descriptor(::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, thisUserOnly));
    bool isWritten = descriptor.isOpen() && writeAll(descriptor.number(), content) && ::fsync(descriptor.number()) == 0;
    if (!isWritten) fail("Cannot write ", file);
}

}  // namespace

std::optional<std::string> FileDisk::readFile(const Path& file) {
    return read(file, [](const std::string&) { return false; });
}

std::optional<std::string> FileDisk::readFirstLine(const Path& file) {
    auto content = read(file, [](const std::string& beginning) { return beginning.find('\n') != std::string::npos; });
    if (content) content->resize(std::min(content->find('\n'), content->size()));
    return content;
}

bool FileDisk::exists(const Path& file) { return fs::exists(file); }

std::vector<Disk::ListedFile> FileDisk::filesIn(const Path& folder) {
    std::vector<ListedFile> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) files.push_back({entry.path(), entry.file_size(), entry.last_write_time()});
    }
    return files;
}

void FileDisk::makeFolder(const Path& folder) {
    bool isNew = fs::create_directories(folder);
    if (isNew) fs::permissions(folder, fs::perms::owner_all);
}

/// A file that is there is not opened: closing it would drop the locks that a database of this process holds on it.
void FileDisk::makeFile(const Path& file) {
    Descriptor made(::open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, thisUserOnly));
    if (made.isOpen()) return;
    if (errno != EEXIST) fail("Cannot make ", file);
    ::chmod(file.c_str(), thisUserOnly);
}

void FileDisk::replaceFile(const Path& file, std::string_view content) {
    Path draft = file;
    draft += draftEnding;
    writeFile(draft, content);
    fs::rename(draft, file);
}

void FileDisk::touchFile(const Path& file) { fs::last_write_time(file, Time::clock::now()); }

void FileDisk::renameFile(const Path& from, const Path& to) { fs::rename(from, to); }

void FileDisk::removeFile(const Path& file) { fs::remove(file); }

/// The machine speaks for itself.
void FileDisk::admit(DiskUse) {}

}  // namespace vantix
