#include "Tools/vantix-inapp/BackendCommand.h"

#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Backend.h"
#include "Tools/vantix-inapp/InputFile.h"

#include <csignal>
#include <cstdio>

namespace vantix {

namespace {

void print(const std::string& line) {
    std::fprintf(stdout, "%s\n", line.c_str());
    std::fflush(stdout);
}

}  // namespace

void runBackend(const BackendOptions& options) {
    if (options.triggers) readInputFile(options.triggers->string());

    // Blocked before the server's threads start, so that the signal waits for this one.
    sigset_t endings;
    sigemptyset(&endings);
    sigaddset(&endings, SIGINT);
    sigaddset(&endings, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &endings, nullptr);

    Backend backend(options, print);
    Dictionary address{{"baseURL", backend.url()}};
    if (options.usesTLS) address.set("sslKeyHash", backend.pin());
    print(toJSON(Dictionary{{"backend", address}}));

    int signal = 0;
    sigwait(&endings, &signal);
}

}  // namespace vantix
