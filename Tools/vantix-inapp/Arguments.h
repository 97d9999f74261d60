#pragma once

#include "Tools/vantix-inapp/Backend.h"
#include "Tools/vantix-inapp/Devices.h"

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantix {

struct HelpArguments {};

struct PlayArguments {
    /// "-" is standard input.
    std::string scenario;
    std::optional<std::filesystem::path> stateDirectory;
    std::filesystem::path outputDirectory = ".";
    bool live = false;
};

struct RenderArguments {
    std::string campaign;
    std::filesystem::path picture;
    /// Absent: a sheet of all devices.
    std::optional<Device> device;
    double textScale = 1;
};

using Arguments = std::variant<HelpArguments, PlayArguments, RenderArguments, BackendOptions>;

/// Reads the words after the program's name. Throws BadInput.
Arguments parseArguments(const std::vector<std::string>& words);

/// How the program is called.
extern const char* const usage;

}  // namespace vantix
