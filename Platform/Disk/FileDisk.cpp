#include "Platform/Disk/FileDisk.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vantix {

namespace fs = std::filesystem;

namespace {

constexpr mode_t thisUserOnly = S_IRUSR | S_IWUSR;
constexpr mode_t thisUsersFolder = S_IRWXU;

[[noreturn]] void fail(const char* what, const fs::path& file) {
    throw std::system_error(errno, std::generic_category(), what + file.string());
}

bool isMissing(int error) { return error == ENOENT; }

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor() {
        if (isOpen()) ::close(number_);
    }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

private:
    int number_;
};

/// A name in a folder that was opened, so that nobody can put a link in the folder's place any more.
struct Place {
    Descriptor folder;
    std::string name;
    const fs::path& path;
};

Descriptor openedFolder(const fs::path& folder) {
    return Descriptor(::open(folder.empty() ? "." : folder.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// Absent when the folder is missing.
std::optional<Place> placeIfAny(const fs::path& path) {
    Descriptor folder = openedFolder(path.parent_path());
    if (!folder.isOpen() && isMissing(errno)) return {};
    if (!folder.isOpen()) fail("Cannot open the folder of ", path);
    return Place{std::move(folder), path.filename(), path};
}

Place placeOf(const fs::path& path) {
    auto place = placeIfAny(path);
    if (!place) fail("Cannot open the folder of ", path);
    return std::move(*place);
}

std::string_view oddityOf(mode_t mode) {
    if (S_ISDIR(mode)) return "a folder";
    if (S_ISLNK(mode)) return "a link";
    if (S_ISFIFO(mode)) return "a pipe";
    if (S_ISSOCK(mode)) return "a socket";
    return S_ISREG(mode) ? "" : "a device";
}

/// Absent when nothing stands there; nothing but a file passes.
std::optional<struct stat> stateOfFile(const Place& place) {
    struct stat state {};
    if (::fstatat(place.folder.number(), place.name.c_str(), &state, AT_SYMLINK_NOFOLLOW) != 0) {
        if (isMissing(errno)) return {};
        fail("Cannot look at ", place.path);
    }
    if (auto oddity = oddityOf(state.st_mode); !oddity.empty()) throw OddFile(place.path, oddity);
    return state;
}

Descriptor opened(const Place& place, int flags, mode_t mode = 0) {
    return Descriptor(
        ::openat(place.folder.number(), place.name.c_str(), flags | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC, mode));
}

/// Reads until the end, or until what has been read is enough.
template <typename Enough>
std::string readAll(const Place& place, Enough enough) {
    Descriptor file = opened(place, O_RDONLY);
    if (!file.isOpen() && errno == EACCES) throw OddFile(place.path, "not readable for this user");
    if (!file.isOpen()) fail("Cannot read ", place.path);
    std::string content;
    std::array<char, 16384> piece{};
    while (!enough(content)) {
        ssize_t count = ::read(file.number(), piece.data(), piece.size());
        if (count == 0) break;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail("Cannot read ", place.path);
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

/// Also against a umask that takes the user's own rights away.
Descriptor madeFile(const Place& place) {
    Descriptor file = opened(place, O_RDWR | O_CREAT | O_EXCL, thisUserOnly);
    if (file.isOpen() && ::fchmod(file.number(), thisUserOnly) != 0) fail("Cannot hide ", place.path);
    return file;
}

void makeOneFolder(const fs::path& folder) {
    if (::mkdir(folder.c_str(), thisUsersFolder) == 0) {
        if (::chmod(folder.c_str(), thisUsersFolder) != 0) fail("Cannot hide ", folder);
    } else if (errno != EEXIST) {
        fail("Cannot make ", folder);
    }
}

void sync(const Descriptor& descriptor, const fs::path& path) {
    if (!descriptor.isOpen() || ::fsync(descriptor.number()) != 0) fail("Cannot sync ", path);
}

/// Absent when another process removed it meanwhile.
std::optional<Disk::Listed> listedIfAny(const fs::directory_entry& entry) {
    try {
        bool isFile = entry.symlink_status().type() == fs::file_type::regular;
        return Disk::Listed{entry.path(), isFile, isFile ? entry.file_size() : 0,
                            isFile ? entry.last_write_time() : fs::file_time_type()};
    } catch (const fs::filesystem_error& problem) {
        if (isMissing(problem.code().value())) return {};
        throw;
    }
}

}  // namespace

std::optional<std::string> FileDisk::readFile(const Path& file, std::uintmax_t largest) {
    auto place = placeIfAny(file);
    if (!place || !stateOfFile(*place)) return {};
    auto content = readAll(*place, [&](const std::string& beginning) { return beginning.size() > largest; });
    if (content.size() > largest) throw OddFile(file, "too large");
    return content;
}

std::optional<std::string> FileDisk::readFirstLine(const Path& file, std::size_t longest) {
    auto place = placeIfAny(file);
    if (!place || !stateOfFile(*place)) return {};
    auto content = readAll(*place, [&](const std::string& beginning) {
        return beginning.size() > longest || beginning.find('\n') != std::string::npos;
    });
    content.resize(std::min(content.find('\n'), content.size()));
    if (content.size() > longest) throw OddFile(file, "too large");
    return content;
}

bool FileDisk::exists(const Path& path) {
    auto place = placeIfAny(path);
    if (!place) return false;
    if (::faccessat(place->folder.number(), place->name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) return true;
    if (!isMissing(errno)) fail("Cannot look at ", path);
    return false;
}

std::vector<Disk::Listed> FileDisk::list(const Path& folder) {
    if (!openedFolder(folder).isOpen()) fail("Cannot open the folder ", folder);
    std::vector<Listed> listed;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (auto found = listedIfAny(entry)) listed.push_back(std::move(*found));
    }
    return listed;
}

void FileDisk::makeFolder(const Path& folder) {
    if (openedFolder(folder).isOpen()) return;
    std::error_code ignored;
    if (!fs::exists(folder.parent_path(), ignored)) makeFolder(folder.parent_path());
    makeOneFolder(folder);
    if (openedFolder(folder).isOpen()) return;
    if (errno == ENOTDIR) throw OddFile(folder, "no folder");
    fail("Cannot open the folder ", folder);
}

void FileDisk::hideFolder(const Path& folder) {
    Place place = placeOf(folder);
    struct stat state {};
    bool isKnown = ::fstatat(place.folder.number(), place.name.c_str(), &state, AT_SYMLINK_NOFOLLOW) == 0;
    if (isKnown && (state.st_mode & ALLPERMS) == thisUsersFolder) return;
    isKnown = isKnown && S_ISDIR(state.st_mode);
    if (!isKnown || ::fchmodat(place.folder.number(), place.name.c_str(), thisUsersFolder, AT_SYMLINK_NOFOLLOW) != 0) {
        fail("Cannot hide ", folder);
    }
}

/// A file that is there is not opened: closing it would drop the locks that a database of this process holds on it.
void FileDisk::makeFile(const Path& file) {
    Place place = placeOf(file);
    if (madeFile(place).isOpen()) return;
    if (errno != EEXIST) fail("Cannot make ", file);
    hideFile(file);
}

void FileDisk::hideFile(const Path& file) {
    auto place = placeIfAny(file);
    auto state = place ? stateOfFile(*place) : std::nullopt;
    if (!state) return;
    int folder = place->folder.number();
    const char* name = place->name.c_str();
    bool isHidden = (state->st_mode & ALLPERMS) == thisUserOnly;
    if (!isHidden && ::fchmodat(folder, name, thisUserOnly, AT_SYMLINK_NOFOLLOW) != 0 && errno != EPERM) {
        fail("Cannot hide ", file);
    }
    bool isUsable = ::faccessat(folder, name, R_OK | W_OK, AT_EACCESS) == 0 || errno != EACCES;
    if (!isUsable) throw OddFile(file, "another user's");
}

void FileDisk::writeFile(const Path& file, std::string_view content) {
    Place place = placeOf(file);
    Descriptor made = madeFile(place);
    if (!made.isOpen() || !writeAll(made.number(), content)) fail("Cannot write ", file);
}

void FileDisk::syncFile(const Path& file) { sync(opened(placeOf(file), O_RDONLY), file); }

void FileDisk::syncFolder(const Path& folder) {
    sync(Descriptor(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)),
         folder);
}

/// The kernel's own "now" is too coarse to tell apart what follows each other at once.
void FileDisk::touchFile(const Path& file) {
    Place place = placeOf(file);
    std::array<timespec, 2> now{};
    ::clock_gettime(CLOCK_REALTIME, &now[0]);
    now[1] = now[0];
    if (::utimensat(place.folder.number(), place.name.c_str(), now.data(), AT_SYMLINK_NOFOLLOW) != 0) {
        fail("Cannot touch ", file);
    }
}

void FileDisk::renameFile(const Path& from, const Path& to) {
    Place old = placeOf(from);
    Place next = placeOf(to);
    if (::renameat(old.folder.number(), old.name.c_str(), next.folder.number(), next.name.c_str()) != 0) {
        fail("Cannot rename ", from);
    }
}

void FileDisk::removeFile(const Path& file) {
    auto place = placeIfAny(file);
    if (!place || ::unlinkat(place->folder.number(), place->name.c_str(), 0) == 0 || isMissing(errno)) return;
    if (errno == EISDIR && ::unlinkat(place->folder.number(), place->name.c_str(), AT_REMOVEDIR) == 0) return;
    fail("Cannot remove ", file);
}

/// The machine speaks for itself.
void FileDisk::admit(const DiskAccess&) {}

}  // namespace vantix
