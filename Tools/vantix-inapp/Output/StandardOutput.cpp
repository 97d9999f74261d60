#include "Tools/vantix-inapp/Output/StandardOutput.h"

#include "Platform/Values/ControlCharacters.h"
#include "Tools/vantix-inapp/Input/BadInput.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace vantix {

namespace {

/// The first error number; 0 while all went well.
std::atomic<int> failure = 0;

void remember(int error) {
    int none = 0;
    if (error != EPIPE) failure.compare_exchange_strong(none, error);
}

}  // namespace

void printLine(std::string_view line) {
    std::string text = withEscapedControlCharacters(line) + "\n";
    bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (std::fflush(stdout) != 0 || !isWritten) remember(errno);
}

void requirePrinted() {
    if (std::fflush(stdout) != 0) remember(errno);
    if (failure) throw BadInput(std::string("standard output cannot be written: ") + std::strerror(failure));
}

}  // namespace vantix
