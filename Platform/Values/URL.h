#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// A URL or relative reference, valid after RFC 3986, kept as it was written.
class URL {
public:
    /// Absent unless the text is a valid reference: not empty, no blanks, no bare non-ASCII.
    static std::optional<URL> parse(std::string_view text);

    const std::string& text() const { return text_; }
    /// In lower case; empty for a relative reference.
    std::string scheme() const;
    /// Whether it can be fetched: scheme http or https and a host.
    bool isWebAddress() const;

    bool operator==(const URL&) const = default;

private:
    explicit URL(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

}  // namespace vantix
