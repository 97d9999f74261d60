#include "Platform/Values/URLRefusal.h"

#include "Platform/Values/ControlCharacters.h"

#include <algorithm>
#include <array>

namespace vantix {

namespace {

constexpr std::array<std::string_view, 8> alwaysRefused{"about", "blob",   "content",    "data",
                                                        "file",  "intent", "javascript", "vbscript"};

/// What follows their colon is a URL itself.
constexpr std::array<std::string_view, 4> wrappers{"feed", "filesystem", "jar", "view-source"};

char lowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool isLetter(char c) { return lowerCase(c) >= 'a' && lowerCase(c) <= 'z'; }
bool isOfScheme(char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.'; }

bool isSameScheme(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, lowerCase, lowerCase);
}

bool holds(const auto& schemes, std::string_view scheme) {
    return std::ranges::any_of(schemes, [=](std::string_view each) { return isSameScheme(each, scheme); });
}

/// Empty when the text is no absolute URL.
std::string_view schemeOf(std::string_view text) {
    std::string_view scheme = text.substr(0, text.find(':'));
    bool isScheme = scheme.size() < text.size() && !scheme.empty() && isLetter(scheme.front()) &&
                    std::ranges::all_of(scheme, isOfScheme);
    return isScheme ? scheme : std::string_view();
}

}  // namespace

std::optional<std::string> refusalToOpen(std::string_view text, const std::vector<std::string>& refusedSchemes,
                                         const std::vector<std::string>& ownSchemes) {
    if (hasControlCharacters(text)) return "it holds control characters";
    if (text.ends_with(' ')) return "it ends with a blank";
    if (holds(ownSchemes, schemeOf(text))) return {};
    while (true) {
        std::string_view scheme = schemeOf(text);
        if (scheme.empty()) return "it is no absolute URL";
        if (scheme.size() == 1 || holds(alwaysRefused, scheme) || holds(refusedSchemes, scheme)) {
            return "its scheme is never opened";
        }
        if (!holds(wrappers, scheme)) return {};
        text.remove_prefix(scheme.size() + 1);
    }
}

}  // namespace vantix
