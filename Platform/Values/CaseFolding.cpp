#include "Platform/Values/CaseFolding.h"

#include <utf8proc.h>

#include <cstdlib>
#include <memory>

namespace vantix {

std::string foldCase(std::string_view text) {
    utf8proc_uint8_t* raw = nullptr;
    auto length =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()), static_cast<utf8proc_ssize_t>(text.size()),
                     &raw, static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE | UTF8PROC_CASEFOLD));
    std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> folded(raw, &std::free);
    if (length < 0) return std::string(text);
    return {reinterpret_cast<const char*>(folded.get()), static_cast<std::size_t>(length)};
}

}  // namespace vantix
