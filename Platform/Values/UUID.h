#pragma once

#include <string>

namespace vantix {

/// A fresh random UUID (version 4) in its standard text form, upper case. Usable from any thread.
std::string makeUUID();

}  // namespace vantix
