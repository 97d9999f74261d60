#include "VantixInAppMessage/Manager/MainThread.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/FatalError.h"

#include <string>
#include <utility>

namespace vantix {

void runOnMainThread(std::function<void()> work) {
    auto& main = Platform::current()->dispatcher->mainQueue();
    if (main.isCurrent()) {
        work();
    } else {
        main.async(std::move(work));
    }
}

void assertMainThread(const char* operation) {
    if (!Platform::current()->dispatcher->mainQueue().isCurrent()) {
        fatalError(std::string(operation) + " belongs to the main thread");
    }
}

}  // namespace vantix
