#include "Platform/Values/UTF8.h"

#include <utf8proc.h>

namespace vantix {

namespace {

/// The number of bytes of the code point at the front, 0 when the front is no valid UTF-8.
std::size_t decodeFront(std::string_view text, utf8proc_int32_t& codePoint) {
    auto bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    auto length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

}  // namespace

std::size_t codePointLength(std::string_view text) {
    utf8proc_int32_t codePoint = 0;
    return decodeFront(text, codePoint);
}

std::string repairUTF8(std::string_view text) {
    std::string repaired;
    repaired.reserve(text.size());
    while (!text.empty()) {
        utf8proc_int32_t codePoint = 0;
        std::size_t length = decodeFront(text, codePoint);
        repaired += length ? text.substr(0, length) : std::string_view("\uFFFD");
        text.remove_prefix(length ? length : 1);
    }
    return repaired;
}

std::u32string codePoints(std::string_view text) {
    std::u32string points;
    while (!text.empty()) {
        utf8proc_int32_t codePoint = 0;
        std::size_t length = decodeFront(text, codePoint);
        points += length ? static_cast<char32_t>(codePoint) : U'\uFFFD';
        text.remove_prefix(length ? length : 1);
    }
    return points;
}

std::optional<LayoutDirection> strongDirection(std::string_view text) {
    while (!text.empty()) {
        utf8proc_int32_t codePoint = 0;
        std::size_t length = decodeFront(text, codePoint);
        if (length) {
            auto direction = utf8proc_get_property(codePoint)->bidi_class;
            if (direction == UTF8PROC_BIDI_CLASS_L) return LayoutDirection::leftToRight;
            if (direction == UTF8PROC_BIDI_CLASS_R || direction == UTF8PROC_BIDI_CLASS_AL)
                return LayoutDirection::rightToLeft;
        }
        text.remove_prefix(length ? length : 1);
    }
    return {};
}

bool isRightToLeft(std::string_view text) { return strongDirection(text) == LayoutDirection::rightToLeft; }

}  // namespace vantix
