#pragma once

#include "CampaignCheck/Text/CampaignText.h"
#include "Platform/Values/Value.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// A text that the device cannot read: the campaign's own, or a nested one.
struct UnreadableText {
    /// A JSON pointer; empty for the campaign itself.
    std::string place;
    std::string reason;
};

/// One campaign: what its author wrote, and what a device makes of it. Reading it never fails.
struct Campaign {
    /// As it was named.
    std::string file;
    CampaignText text;
    std::vector<UnreadableText> unreadable = {};
    /// The push that carries it.
    Dictionary push = {};
    /// What its nested texts hold.
    Dictionary trigger = {};
    Dictionary body = {};
    Dictionary style = {};
    /// What the module decodes from the push; never null.
    SharedPayload message = std::make_shared<const VantixInAppMessagePayload>();

    /// The ports are installed (decoding asks which fonts there are).
    static Campaign read(std::string file, std::string text);

    /// Whether it is a JSON object at all.
    bool isReadable() const { return unreadable.empty() || !unreadable.front().place.empty(); }
    /// Whether its nested text under the key is one, or is not there.
    bool isReadable(std::string_view key) const {
        return std::ranges::find(unreadable, std::string("/").append(key), &UnreadableText::place) == unreadable.end();
    }
};

}  // namespace vantix
