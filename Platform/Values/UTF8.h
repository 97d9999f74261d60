#pragma once

#include <string>
#include <string_view>

namespace vantix {

/// The text with every byte that is no part of valid UTF-8 replaced by the replacement character (U+FFFD).
std::string repairUTF8(std::string_view text);

/// Whether the first character with a strong direction is written from right to left (Hebrew, Arabic and their like).
bool isRightToLeft(std::string_view text);

}  // namespace vantix
