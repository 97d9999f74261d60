#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vantix {

/// A run of vantix-inapp beside the test; killed when the object goes while it still runs.
class RunningProgram {
public:
    /// Starts it in the folder; its standard error goes to the terminal.
    RunningProgram(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                   const std::string& input = "");
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Waits for the next line; absent at the end of the output, where half a line does not count.
    std::optional<std::string> readLine();

    /// Sends the signal (0: none), unless the program has been ended, and waits for its end: the exit status, or the
    /// negative number of the signal that ended it.
    int end(int signal);
    /// All lines that have not been read, to the end of the output.
    std::vector<std::string> remainingLines();

private:
    pid_t process_ = 0;
    std::FILE* output_ = nullptr;
};

}  // namespace vantix
