#include "Tools/vantix-inapp/Arguments.h"
#include "Tools/vantix-inapp/BackendCommand.h"
#include "Tools/vantix-inapp/BadInput.h"
#include "Tools/vantix-inapp/PlayCommand.h"
#include "Tools/vantix-inapp/RenderCommand.h"

#include <csignal>
#include <cstdio>
#include <string>
#include <variant>
#include <vector>

using namespace vantix;

namespace {

constexpr int done = 0;
constexpr int badInput = 2;

void run(const HelpArguments&) { std::fputs(usage, stdout); }
void run(const PlayArguments& arguments) { play(arguments); }
void run(const RenderArguments& arguments) { render(arguments); }
void run(const BackendOptions& options) { runBackend(options); }

int complain(const std::string& problem) {
    std::fprintf(stderr, "%s\n", problem.c_str());
    return badInput;
}

}  // namespace

int main(int count, char** words) {
    // Whoever reads the lines may leave early; the state directory is to be removed all the same.
    std::signal(SIGPIPE, SIG_IGN);

    Arguments arguments;
    try {
        arguments = parseArguments(std::vector<std::string>(words + 1, words + count));
    } catch (const BadInput& problem) {
        std::fputs(usage, stderr);
        return complain(problem.what());
    }
    try {
        std::visit([](const auto& command) { run(command); }, arguments);
    } catch (const BadInput& problem) {
        return complain(problem.what());
    }
    return done;
}
