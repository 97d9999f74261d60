#include "Tools/vantix-inapp/Check/CampaignFolder.h"

#include "Tools/vantix-inapp/Input/BadInput.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vantix {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> filesBelow(const std::string& folder) {
    std::vector<std::string> files;
    std::error_code problem;
    for (fs::recursive_directory_iterator at(folder, problem), end; !problem && at != end; at.increment(problem)) {
        if (at->path().extension() == ".json" && at->is_regular_file()) files.push_back(at->path().string());
    }
    if (problem) throw BadInput(folder + ": cannot be read: " + problem.message());
    if (files.empty()) throw BadInput(folder + ": holds no .json file");
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<std::string> campaignFilesIn(const std::vector<std::string>& names) {
    std::vector<std::string> files;
    for (const std::string& name : names) {
        std::error_code problem;
        bool isFolder = name != "-" && fs::is_directory(name, problem);
        std::vector<std::string> found = isFolder ? filesBelow(name) : std::vector{name};
        files.insert(files.end(), found.begin(), found.end());
    }
    return files;
}

}  // namespace vantix
