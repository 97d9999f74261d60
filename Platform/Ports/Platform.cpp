#include "Platform/Ports/Platform.h"

#include "Platform/Values/AtomicPointer.h"
#include "Platform/Values/FatalError.h"

#include <utility>

namespace vantix {

namespace {

/// Never destroyed: threads may ask until the very end of the process.
AtomicPointer<const Platform>& installed() {
    static auto* platform = new AtomicPointer<const Platform>;
    return *platform;
}

}  // namespace

void Platform::install(Platform platform) { installed().store(std::make_shared<const Platform>(std::move(platform))); }

void Platform::uninstall() { installed().store(nullptr); }

std::shared_ptr<const Platform> Platform::current() {
    auto platform = installed().load();
    if (!platform) fatalError("No platform is installed");
    return platform;
}

}  // namespace vantix
