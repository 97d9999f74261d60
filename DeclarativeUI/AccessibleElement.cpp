#include "DeclarativeUI/AccessibleElement.h"

#include <array>

namespace vantix {

const char* roleName(Role role) {
    static constexpr std::array names = {"card",  "title", "message", "text", "image",   "button",
                                         "close", "star",  "option",  "row",  "divider", "mark"};
    return names[static_cast<std::size_t>(role)];
}

}  // namespace vantix
