#pragma once

#include "Platform/Values/Export.h"

#include <functional>
#include <string>
#include <string_view>

namespace vantix {

/// Hears of a fatal condition before the process stops, on the thread that met it, to write and flush its last words.
/// Replaces the earlier handler; an empty one writes to standard error. One that throws keeps the process alive, which
/// is for programs that try inputs alone: what failed is left as it stood.
VANTIX_EXPORT void setFatalErrorHandler(std::function<void(std::string_view message)> handler);

/// A programming error was met: tells the handler and aborts the process.
[[noreturn]] VANTIX_EXPORT void fatalError(std::string_view message);

}  // namespace vantix
