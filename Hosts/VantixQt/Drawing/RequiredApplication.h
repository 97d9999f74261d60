#pragma once

#include <string>

namespace vantix {

/// Stops the process with a text that names the part when there is no QGuiApplication yet. Any thread.
void requireApplication(const std::string& part);

}  // namespace vantix
