#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"

#include <charconv>

namespace vantix {

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int64_t number = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

}  // namespace vantix
