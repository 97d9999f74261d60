#pragma once

#include <filesystem>
#include <string_view>

namespace vantix {

/// Makes the folder and those above it when missing, for this user alone. Throws std::filesystem::filesystem_error.
void makePrivateDirectory(const std::filesystem::path& directory);

/// Replaces the whole file at once: whoever reads it, even after a crash, finds the old text or the new one. Only this
/// user may read it. Its folder must exist; two writers of one file must not overlap. Throws std::system_error.
void replacePrivateFile(const std::filesystem::path& file, std::string_view text);

}  // namespace vantix
