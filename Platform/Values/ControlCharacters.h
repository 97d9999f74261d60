#pragma once

#include <string>
#include <string_view>

namespace vantix {

// A control character directs a text's lines, or the terminal or the order that it is shown in, instead of being shown:
// C0 and C1 controls, delete, the separators of lines and paragraphs, the marks of direction. Bytes that are no part of
// valid UTF-8 count as such.

bool hasControlCharacters(std::string_view text);

/// The text in one line that cannot be taken for anything else: control characters are written as JSON writes them
/// ("\n", "\u202e"), bytes that are no part of valid UTF-8 as "\xff". JSON stays JSON of the same meaning.
std::string withEscapedControlCharacters(std::string_view text);

}  // namespace vantix
