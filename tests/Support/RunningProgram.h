#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vantix {

using Lines = std::vector<std::string>;

/// A run of vantix-inapp beside the test, in a folder that takes its temporary files, too; killed when the object goes
/// while it still runs.
class RunningProgram {
public:
    /// The folder gets a file "stdin", with the text, and a file "stderr".
    RunningProgram(const Lines& arguments, std::filesystem::path folder, const std::string& input = "");
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Waits for the next line; absent at the end of the output, where half a line does not count.
    std::optional<std::string> readLine();
    /// All lines that have not been read, to the end of the output.
    Lines remainingLines();
    /// Sends the signal (0: none), unless the program has been ended, and waits for its end: the exit status, or the
    /// negative number of the signal that ended it.
    int end(int signal = 0);
    /// What it has said on standard error.
    Lines errors() const;

private:
    std::filesystem::path folder_;
    pid_t process_ = 0;
    std::FILE* output_ = nullptr;
};

/// How a run of vantix-inapp ended.
struct ProgramRun {
    /// As RunningProgram::end says it.
    int status = 0;
    Lines output;
    Lines errors;
};

/// Runs it to its end.
ProgramRun runProgram(const Lines& arguments, const std::filesystem::path& folder, const std::string& input = "");

std::string readFile(const std::filesystem::path& path);
Lines linesOf(const std::string& text);

}  // namespace vantix
