#pragma once

#include <string_view>

namespace vantix {

// Standard output as the program prints to it: whole lines, from any thread, each flushed before the call returns, so
// that whoever reads them sees what has happened.

/// Control characters (Platform/Values/ControlCharacters.h) are written as escapes, so that no text can make up a line.
void printLine(std::string_view line);

/// Throws BadInput once a line has found no room. That nobody reads on is no fault.
void requirePrinted();

}  // namespace vantix
