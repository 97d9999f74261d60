#pragma once

#include "Platform/Values/LayoutDirection.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// The number of bytes of the character at the front; 0 when there is no valid UTF-8.
std::size_t codePointLength(std::string_view text);

/// The text with every byte that is no part of valid UTF-8 replaced by the replacement character (U+FFFD).
std::string repairUTF8(std::string_view text);

/// Its characters, one by one, with a replacement character for every byte that is no part of valid UTF-8.
std::u32string codePoints(std::string_view text);

/// The direction of the first character that has a strong one: right to left are Hebrew, Arabic and their like. Absent
/// when there is no such character, as in numbers.
std::optional<LayoutDirection> strongDirection(std::string_view text);
/// Whether that is from right to left.
bool isRightToLeft(std::string_view text);

}  // namespace vantix
