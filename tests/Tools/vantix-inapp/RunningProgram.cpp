#include "tests/Tools/vantix-inapp/RunningProgram.h"

#include "tests/Tools/vantix-inapp/Program.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace vantix {

RunningProgram::RunningProgram(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                               const std::string& input) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    output_ = fdopen(ends[0], "r");

    std::string command = programCommand(arguments, folder, input);
    std::string shell = "sh", option = "-c";
    char* words[] = {shell.data(), option.data(), command.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    int failure = posix_spawn(&process_, "/bin/sh", &actions, nullptr, words, environ);
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

int RunningProgram::end(int signal) {
    pid_t process = std::exchange(process_, 0);
    if (process == 0) return 0;
    int outcome = 0;
    kill(process, signal);
    waitpid(process, &outcome, 0);
    return WIFEXITED(outcome) ? WEXITSTATUS(outcome) : -WTERMSIG(outcome);
}

std::vector<std::string> RunningProgram::remainingLines() {
    std::vector<std::string> lines;
    while (auto line = readLine()) lines.push_back(std::move(*line));
    return lines;
}

}  // namespace vantix
