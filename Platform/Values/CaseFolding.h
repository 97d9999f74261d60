#pragma once

#include <string>
#include <string_view>

namespace vantix {

/// The text with the differences of letter case removed (full Unicode case folding, canonically composed). Two texts
/// are equal under a case-insensitive comparison exactly when their foldings are equal. Bytes that are no UTF-8 are
/// kept as they are.
std::string foldCase(std::string_view text);

}  // namespace vantix
