#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Result.h"
#include "Platform/Values/Value.h"

#include <string>
#include <string_view>

namespace vantix {

/// The deepest nesting of lists and dictionaries that is accepted.
inline constexpr int maximumNesting = 512;

/// Parses one JSON text (RFC 8259, UTF-8). Any value may stand at the top; an integer beyond 64 bits is read as a
/// double; of a repeated key the last value counts. Fails on malformed text, a lone surrogate, a byte-order mark and
/// deeper nesting than `maximumNesting`. Usable from any thread.
VANTIX_EXPORT Result<Value> parseJSON(std::string_view text);

/// The compact JSON text of a value, in one line, keys in the dictionary's order. Numbers are written in their shortest
/// exact form (a whole double keeps ".0"), a number that JSON cannot express and an opaque value as null, bytes that
/// are no UTF-8 as the replacement character.
VANTIX_EXPORT std::string toJSON(const Value& value);

/// The text without the white space between its tokens, everything else as written. Only for valid JSON.
VANTIX_EXPORT std::string minifyJSON(std::string_view text);

}  // namespace vantix
