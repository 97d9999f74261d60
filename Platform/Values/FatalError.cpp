#include "Platform/Values/FatalError.h"

#include "Platform/Values/ControlCharacters.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace vantix {

namespace {

/// Never destroyed: threads may fail until the very end of the process.
std::function<void(std::string_view)>& handler() {
    static auto* installed = new std::function<void(std::string_view)>;
    return *installed;
}

}  // namespace

void setFatalErrorHandler(std::function<void(std::string_view)> replacement) { handler() = std::move(replacement); }

void fatalError(std::string_view message) {
    if (handler()) {
        handler()(message);
    } else {
        std::fprintf(stderr, "Fatal error: %s\n", withEscapedControlCharacters(message).c_str());
        std::fflush(stderr);
    }
    std::abort();
}

}  // namespace vantix
