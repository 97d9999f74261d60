#include "Platform/Values/ControlCharacters.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace vantix {

namespace {

struct Range {
    utf8proc_int32_t first, last;
};

constexpr std::array<Range, 6> controls{{
    {0x00, 0x1F},      // C0
    {0x7F, 0x9F},      // delete and C1
    {0x061C, 0x061C},  // the Arabic letter mark
    {0x200E, 0x200F},  // left-to-right and right-to-left marks
    {0x2028, 0x202E},  // separators of lines and paragraphs, embeddings and overrides
    {0x2066, 0x2069},  // isolates
}};

bool isControl(utf8proc_int32_t codePoint) {
    return std::any_of(controls.begin(), controls.end(),
                       [=](const Range& range) { return codePoint >= range.first && codePoint <= range.last; });
}

/// What stands at the front of a text.
struct Front {
    std::size_t length;
    /// Absent for a byte that is no part of valid UTF-8.
    std::optional<utf8proc_int32_t> codePoint;

    bool isShown() const { return codePoint && !isControl(*codePoint); }
};

Front frontOf(std::string_view text) {
    auto bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    utf8proc_int32_t codePoint = 0;
    auto length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    if (length <= 0) return {1, {}};
    return {static_cast<std::size_t>(length), codePoint};
}

std::string escaped(const char* format, unsigned number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

std::string escape(const Front& front, char firstByte) {
    if (!front.codePoint) return escaped("\\x%02x", static_cast<unsigned char>(firstByte));
    switch (*front.codePoint) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return escaped("\\u%04x", static_cast<unsigned>(*front.codePoint));
    }
}

/// The length of what needs no escape at the front.
std::size_t shownLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size()) {
        Front front = frontOf(text.substr(length));
        if (!front.isShown()) break;
        length += front.length;
    }
    return length;
}

}  // namespace

bool hasControlCharacters(std::string_view text) { return shownLength(text) < text.size(); }

std::string withEscapedControlCharacters(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (true) {
        std::size_t shown = shownLength(text);
        result += text.substr(0, shown);
        text.remove_prefix(shown);
        if (text.empty()) return result;
        Front front = frontOf(text);
        result += escape(front, text.front());
        text.remove_prefix(front.length);
    }
}

}  // namespace vantix
