#include "Platform/Ports/MainThread.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Ports/RunningQueue.h"

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

void assertMainThread(std::string_view operation) {
    assertOnQueue(Platform::current()->dispatcher->mainQueue(), operation);
}

}  // namespace vantix
