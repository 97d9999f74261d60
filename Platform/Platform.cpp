#include "Platform/Platform.h"

#include "Platform/FatalError.h"

#include <optional>
#include <utility>

namespace vantix {

namespace {

std::optional<Platform>& installed() {
    static std::optional<Platform> platform;
    return platform;
}

}  // namespace

void Platform::install(Platform platform) { installed() = std::move(platform); }

const Platform& Platform::current() {
    if (!installed()) fatalError("No platform is installed");
    return *installed();
}

}  // namespace vantix
