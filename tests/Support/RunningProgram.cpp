#include "tests/Support/RunningProgram.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace vantix {

RunningProgram::RunningProgram(const Lines& arguments, std::filesystem::path folder, const std::string& input)
    : folder_(std::move(folder)) {
    std::ofstream(folder_ / "stdin") << input;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    output_ = fdopen(ends[0], "r");

    // A leak checker would otherwise list on standard error what it was told to pass over.
    Lines words = {"env", "LSAN_OPTIONS=print_suppressions=0", "TMPDIR=.", VANTIX_INAPP};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> vector;
    std::transform(words.begin(), words.end(), std::back_inserter(vector), [](auto& word) { return word.data(); });
    vector.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder_.c_str());
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "stdin", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "stderr", O_WRONLY | O_CREAT | O_TRUNC, 0600);
    int failure = posix_spawnp(&process_, "env", &actions, nullptr, vector.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (failure != 0) throw std::runtime_error("the program cannot be started");
}

RunningProgram::~RunningProgram() {
    end(SIGKILL);
    std::fclose(output_);
}

std::optional<std::string> RunningProgram::readLine() {
    char* buffer = nullptr;
    std::size_t size = 0;
    ssize_t length = getline(&buffer, &size, output_);
    std::unique_ptr<char, decltype(&std::free)> owner(buffer, std::free);
    if (length <= 0 || buffer[length - 1] != '\n') return {};
    return std::string(buffer, static_cast<std::size_t>(length - 1));
}

Lines RunningProgram::remainingLines() {
    Lines lines;
    while (auto line = readLine()) lines.push_back(std::move(*line));
    return lines;
}

int RunningProgram::end(int signal) {
    pid_t process = std::exchange(process_, 0);
    if (process == 0) return 0;
    int outcome = 0;
    kill(process, signal);
    waitpid(process, &outcome, 0);
    return WIFEXITED(outcome) ? WEXITSTATUS(outcome) : -WTERMSIG(outcome);
}

Lines RunningProgram::errors() const { return linesOf(readFile(folder_ / "stderr")); }

ProgramRun runProgram(const Lines& arguments, const std::filesystem::path& folder, const std::string& input) {
    RunningProgram program(arguments, folder, input);
    Lines output = program.remainingLines();
    return {program.end(), std::move(output), program.errors()};
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Lines linesOf(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace vantix
