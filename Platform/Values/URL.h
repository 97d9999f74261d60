#pragma once

#include "Platform/Values/Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// A URL or relative reference, valid after RFC 3986, kept as it was written.
class VANTIX_EXPORT URL {
public:
    /// Absent unless the text is a valid reference: not empty, no blanks, no bare non-ASCII.
    static std::optional<URL> parse(std::string_view text);

    const std::string& text() const { return text_; }
    /// In lower case; empty for a relative reference.
    const std::string& scheme() const { return scheme_; }
    /// Whether it can be fetched: scheme http or https and a host.
    bool isWebAddress() const;
    /// Scheme, host and port ("https://example.com:443"): equal for web addresses that lead to the same server.
    std::string origin() const;

    bool operator==(const URL&) const = default;

private:
    URL() = default;

    std::string text_;
    std::string scheme_;
    /// In lower case, an address without its brackets.
    std::string host_;
    /// As it was written, empty for the scheme's own.
    std::string port_;
};

}  // namespace vantix
