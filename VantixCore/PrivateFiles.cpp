#include "VantixCore/PrivateFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vantix {

namespace {

[[noreturn]] void fail(const std::filesystem::path& file) {
    throw std::system_error(errno, std::generic_category(), "Cannot write " + file.string());
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { ::close(number_); }

    int number() const { return number_; }

private:
    int number_;
};

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void writePrivateFile(const std::filesystem::path& file, std::string_view text) {
    Descriptor descriptor(::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (descriptor.number() < 0) fail(file);
    if (!writeAll(descriptor.number(), text)) fail(file);
    if (::fsync(descriptor.number()) != 0) fail(file);
}

}  // namespace

void makePrivateDirectory(const std::filesystem::path& directory) {
    bool isNew = std::filesystem::create_directories(directory);
    if (isNew) std::filesystem::permissions(directory, std::filesystem::perms::owner_all);
}

void replacePrivateFile(const std::filesystem::path& file, std::string_view text) {
    std::filesystem::path draft = file;
    draft += ".new";
    writePrivateFile(draft, text);
    std::filesystem::rename(draft, file);
}

}  // namespace vantix
