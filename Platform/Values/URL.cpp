#include "Platform/Values/URL.h"

#include <algorithm>
#include <cctype>

namespace vantix {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

/// Unreserved characters and sub-delimiters, which may stand in every component.
bool isCommon(char c) {
    return isLetter(c) || isDigit(c) || std::string_view("-._~!$&'()*+,;=").find(c) != std::string_view::npos;
}

/// Whether the text consists of common characters, percent-encoded bytes and the extra ones.
bool consistsOf(std::string_view text, std::string_view extra) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '%') {
            if (at + 2 >= text.size() || !isHexDigit(text[at + 1]) || !isHexDigit(text[at + 2])) return false;
            at += 2;
        } else if (!isCommon(text[at]) && extra.find(text[at]) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

/// Cuts the part behind the first `separator` off the text and returns it.
std::optional<std::string_view> cutBehind(std::string_view& text, char separator) {
    auto at = text.find(separator);
    if (at == std::string_view::npos) return {};
    auto behind = text.substr(at + 1);
    text = text.substr(0, at);
    return behind;
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text[0]) && std::all_of(text.begin(), text.end(), [](char c) {
        return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
    });
}

bool isAddressLiteral(std::string_view host) {
    if (!host.starts_with('[') || !host.ends_with(']') || host.size() < 4) return false;
    host = host.substr(1, host.size() - 2);
    if (host[0] == 'v' || host[0] == 'V') return consistsOf(host, ":");
    return std::all_of(host.begin(), host.end(), [](char c) { return isHexDigit(c) || c == ':' || c == '.'; }) &&
           std::count(host.begin(), host.end(), ':') >= 2;
}

bool isAuthority(std::string_view authority) {
    if (auto at = authority.find('@'); at != std::string_view::npos) {
        if (!consistsOf(authority.substr(0, at), ":")) return false;
        authority.remove_prefix(at + 1);
    }
    auto portMark = authority.rfind(':');
    if (portMark != std::string_view::npos && authority.find(']', portMark) == std::string_view::npos) {
        auto port = authority.substr(portMark + 1);
        if (!std::all_of(port.begin(), port.end(), isDigit)) return false;
        authority = authority.substr(0, portMark);
    }
    return authority.starts_with('[') ? isAddressLiteral(authority) : consistsOf(authority, "");
}

/// The authority, absent when the hierarchical part has none; the path stays behind in `rest`.
std::optional<std::string_view> cutAuthority(std::string_view& rest) {
    if (!rest.starts_with("//")) return {};
    auto end = std::min(rest.find('/', 2), rest.size());
    auto authority = rest.substr(2, end - 2);
    rest.remove_prefix(end);
    return authority;
}

std::string_view schemeOf(std::string_view text) {
    auto colon = text.find_first_of(":/?#");
    return colon != std::string_view::npos && text[colon] == ':' ? text.substr(0, colon) : std::string_view();
}

}  // namespace

std::optional<URL> URL::parse(std::string_view text) {
    if (text.empty()) return {};
    std::string_view rest = text;
    auto fragment = cutBehind(rest, '#');
    auto query = cutBehind(rest, '?');
    if (fragment && !consistsOf(*fragment, ":@/?")) return {};
    if (query && !consistsOf(*query, ":@/?")) return {};

    auto colon = rest.find_first_of(":/");
    if (colon != std::string_view::npos && rest[colon] == ':') {
        if (!isScheme(rest.substr(0, colon))) return {};
        rest.remove_prefix(colon + 1);
    }
    auto authority = cutAuthority(rest);
    if (authority && !isAuthority(*authority)) return {};
    if (!consistsOf(rest, ":@/")) return {};
    return URL(std::string(text));
}

std::string URL::scheme() const {
    std::string scheme(schemeOf(text_));
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return scheme;
}

bool URL::isWebAddress() const {
    auto name = scheme();
    if (name != "http" && name != "https") return false;
    std::string_view rest = text_;
    cutBehind(rest, '#');
    cutBehind(rest, '?');
    rest.remove_prefix(name.size() + 1);
    auto authority = cutAuthority(rest);
    if (!authority) return false;
    auto host = authority->substr(authority->find('@') == std::string_view::npos ? 0 : authority->find('@') + 1);
    return !host.empty() && host[0] != ':';
}

}  // namespace vantix
