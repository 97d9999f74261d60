#include "Platform/Values/URL.h"

#include <algorithm>
#include <uriparser/Uri.h>

namespace vantix {

namespace {

std::string textOf(const UriTextRangeA& range) {
    return range.first ? std::string(range.first, range.afterLast) : std::string();
}

std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

}  // namespace

std::optional<URL> URL::parse(std::string_view text) {
    if (text.empty()) return {};
    UriUriA parts;
    if (uriParseSingleUriExA(&parts, text.data(), text.data() + text.size(), nullptr) != URI_SUCCESS) return {};

    URL url;
    url.text_ = text;
    url.scheme_ = lowerCase(textOf(parts.scheme));
    url.host_ = lowerCase(textOf(parts.hostText));
    url.port_ = textOf(parts.portText);
    uriFreeUriMembersA(&parts);
    return url;
}

bool URL::isWebAddress() const { return (scheme_ == "http" || scheme_ == "https") && !host_.empty(); }

std::string URL::origin() const {
    const char* ownPort = scheme_ == "https" ? "443" : "80";
    return scheme_ + "://" + host_ + ":" + (port_.empty() ? ownPort : port_);
}

}  // namespace vantix
