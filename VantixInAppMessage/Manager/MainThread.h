#pragma once

#include <functional>

namespace vantix {

/// Runs the work at once on the main thread, otherwise hands it over to it.
void runOnMainThread(std::function<void()> work);

/// Stops the process when the caller is not on the main thread; `operation` is named in the message.
void assertMainThread(const char* operation);

}  // namespace vantix
