#include "Platform/Ports/Disk.h"

namespace vantix {

namespace {

Disk::Path draftOf(const Disk::Path& file) {
    Disk::Path draft = file;
    draft += Disk::draftEnding;
    return draft;
}

}  // namespace

OddFile::OddFile(const std::filesystem::path& file, std::string_view oddity)
    : system_error(std::make_error_code(std::errc::invalid_argument)),
      text_(file.string() + " is " + std::string(oddity)) {}

void Disk::replaceFile(const Path& file, std::string_view content) {
    removeDraft(file);
    Path draft = draftOf(file);
    try {
        writeFile(draft, content);
        syncFile(draft);
        renameFile(draft, file);
    } catch (const std::system_error&) {
        // A disk that refused once may refuse this, too; then the next replacement removes it.
        try {
            removeFile(draft);
        } catch (const std::system_error&) {
        }
        throw;
    }
    syncFolder(file.parent_path());
}

Disk::Path Disk::setAside(const Path& path) {
    for (int number = 1;; ++number) {
        Path name = path;
        name += ".damaged-" + std::to_string(number);
        if (exists(name)) continue;
        renameFile(path, name);
        syncFolder(path.parent_path());
        return name;
    }
}

void Disk::removeDraft(const Path& file) {
    Path draft = draftOf(file);
    if (!exists(draft)) return;
    try {
        removeFile(draft);
    } catch (const std::system_error&) {
        setAside(draft);
    }
}

}  // namespace vantix
