#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantix {

/// The number that a text consists of: decimal digits after an optional sign, nothing else, 64 bits at most.
std::optional<std::int64_t> wholeNumber(std::string_view text);

}  // namespace vantix
