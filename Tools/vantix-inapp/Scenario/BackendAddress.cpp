#include "Tools/vantix-inapp/Scenario/BackendAddress.h"

#include <cctype>

namespace vantix {

std::string withBackendAddress(std::string text, std::string_view address) {
    for (auto at = text.find(backendPlaceholder); at != std::string::npos; at = text.find(backendPlaceholder, at)) {
        text.replace(at, backendPlaceholder.size(), address);
        at += address.size();
    }
    return text;
}

std::string withoutBackendAddress(std::string text, std::string_view address) {
    for (auto at = text.find(address); at != std::string::npos; at = text.find(address, at)) {
        auto end = at + address.size();
        bool portGoesOn = end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])) != 0;
        if (!portGoesOn) text.replace(at, address.size(), backendPlaceholder);
        ++at;
    }
    return text;
}

}  // namespace vantix
