#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vantix {

/// How a run of vantix-inapp ended.
struct ProgramRun {
    /// The exit status, or the negative number of the signal that ended it.
    int status = 0;
    std::vector<std::string> output;
    std::vector<std::string> errors;

    std::string lastError() const { return errors.empty() ? "" : errors.back(); }
};

/// Runs vantix-inapp to its end in the folder, which takes its temporary files, too, with the text on its standard
/// input.
ProgramRun runProgram(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                      const std::string& input = "");

/// The shell's command for such a run, which leaves the shell's process to the program. Writes the input's file.
std::string programCommand(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                           const std::string& input);

std::string readFile(const std::filesystem::path& path);
std::vector<std::string> lines(const std::string& text);

}  // namespace vantix
