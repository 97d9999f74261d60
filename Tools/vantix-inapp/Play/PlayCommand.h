#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vantix {

struct PlayArguments {
    /// "-" is standard input.
    std::string scenario;
    /// Absent: a temporary one.
    std::optional<std::filesystem::path> stateDirectory;
    std::filesystem::path outputDirectory = ".";
    bool live = false;
    /// Whether the findings of each campaign are printed before it is pushed.
    bool checks = false;
};

/// Plays a scenario on standard output. Throws BadInput; a fault in the file before anything is played, output that
/// finds no room after the step that it was for.
void play(const PlayArguments& arguments);

}  // namespace vantix
