#pragma once

#include <string>
#include <vector>

namespace vantix {

/// The files that the names stand for: files and "-" as they are, folders for every .json file below them, by name.
/// Throws BadInput for a name that there is not, and for a folder without such files.
std::vector<std::string> campaignFilesIn(const std::vector<std::string>& names);

}  // namespace vantix
