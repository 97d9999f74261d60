#include "tests/Tools/vantix-inapp/Program.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/wait.h>

namespace vantix {

namespace {

/// The word as the shell takes it literally.
std::string quoted(const std::string& word) {
    std::string text(1, '\'');
    for (char character : word) text.append(character == '\'' ? "'\\''" : std::string(1, character));
    text.push_back('\'');
    return text;
}

}  // namespace

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::string programCommand(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                           const std::string& input) {
    std::ofstream(folder / "stdin") << input;
    // A leak checker would otherwise list on standard error what it was told to pass over.
    std::string command =
        "cd " + quoted(folder.string()) + " && LSAN_OPTIONS=print_suppressions=0 TMPDIR=. exec " + quoted(VANTIX_INAPP);
    for (const std::string& argument : arguments) command.append(" ").append(quoted(argument));
    return command + " < stdin";
}

ProgramRun runProgram(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                      const std::string& input) {
    int outcome = std::system((programCommand(arguments, folder, input) + " > stdout 2> stderr").c_str());

    int status = WIFEXITED(outcome) ? WEXITSTATUS(outcome) : -WTERMSIG(outcome);
    return {status, lines(readFile(folder / "stdout")), lines(readFile(folder / "stderr"))};
}

}  // namespace vantix
