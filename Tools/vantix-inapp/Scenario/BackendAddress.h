#pragma once

#include <string>
#include <string_view>

namespace vantix {

/// What stands for the address of the scenario's back end, in texts of the file and in printed lines.
inline constexpr std::string_view backendPlaceholder = "$BACKEND";

/// The text with the address instead of each placeholder.
std::string withBackendAddress(std::string text, std::string_view address);
/// The text with the placeholder instead of the address, wherever no further digit of a port follows.
std::string withoutBackendAddress(std::string text, std::string_view address);

}  // namespace vantix
