#include "Tools/vantix-inapp/Headless/StateDirectory.h"

#include "Platform/Disk/FileDisk.h"
#include "Tools/vantix-inapp/Input/BadInput.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

namespace vantix {

namespace {

[[noreturn]] void complain(const std::filesystem::path& path, const std::string& reason) {
    throw BadInput("the state directory " + path.string() + " cannot be made: " + reason);
}

/// Whoever names a link means the folder to which it leads.
std::filesystem::path makeGiven(const std::filesystem::path& path) {
    std::error_code problem;
    auto folder = std::filesystem::weakly_canonical(path, problem);
    if (problem) complain(path, problem.message());
    try {
        FileDisk().makeFolder(folder);
    } catch (const OddFile&) {
        complain(path, "Not a directory");
    } catch (const std::system_error& refusal) {
        complain(path, refusal.code().message());
    }
    return folder;
}

std::filesystem::path makeTemporary() {
    std::error_code problem;
    auto folder = std::filesystem::temp_directory_path(problem);
    if (problem) throw BadInput("there is no folder for temporary files (TMPDIR): " + problem.message());
    std::string path = folder / "vantix-inapp-XXXXXX";
    if (!mkdtemp(path.data())) complain(path, std::strerror(errno));
    return path;
}

}  // namespace

StateDirectory::StateDirectory(const std::optional<std::filesystem::path>& given)
    : path_(given ? makeGiven(*given) : makeTemporary()), isTemporary_(!given) {}

StateDirectory::~StateDirectory() { removeTemporary(); }

void StateDirectory::removeTemporary() const {
    std::error_code ignored;
    if (isTemporary_) std::filesystem::remove_all(path_, ignored);
}

}  // namespace vantix
