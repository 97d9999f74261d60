#pragma once

#include "CampaignCheck/Text/JSONWalk.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace vantix {

/// A place in a file as people count it, from 1; a column is one character.
struct TextPosition {
    int line = 1;
    int column = 1;

    bool operator==(const TextPosition&) const = default;
};

/// A campaign's text as its author wrote it, with the position of each value in it. Any bytes will do.
class CampaignText {
public:
    explicit CampaignText(std::string text);

    const std::string& text() const { return text_; }

    /// Where the text, or a nested one, stops being JSON, by JSON pointer.
    const std::map<std::string, std::size_t>& mistakes() const { return mistakes_; }

    /// Where the value stands that the pointer names; where its container stands when it is not there.
    TextPosition positionOfValue(const std::string& pointer) const;
    /// Where its key stands.
    TextPosition positionOfKey(const std::string& pointer) const;
    TextPosition position(std::size_t offset) const;

private:
    JSONPlace place(std::string pointer) const;

    std::string text_;
    std::map<std::string, JSONPlace> places_;
    std::map<std::string, std::size_t> mistakes_;
    /// Offsets of the lines' first bytes.
    std::vector<std::size_t> lines_ = {0};
};

}  // namespace vantix
