#pragma once

#include "Platform/Values/Export.h"

#include <functional>
#include <string_view>

namespace vantix {

/// Runs the work at once on the main thread, otherwise hands it over to it.
VANTIX_EXPORT void runOnMainThread(std::function<void()> work);

/// Stops the process when the caller is not on the main thread; the message names the operation and where it ran.
VANTIX_EXPORT void assertMainThread(std::string_view operation);

}  // namespace vantix
