#include "CampaignCheck/Rules/ContentQuestions.h"

#include "CampaignCheck/Rules/Wording.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"

#include <algorithm>
#include <array>

namespace vantix {

namespace {

constexpr const char* blocks =
    "the device keeps the message as a badge that is never shown and stands in the way of the next ones";

bool isBlank(std::string_view text) {
    constexpr std::array<std::string_view, 3> wideBlanks{"\xC2\xA0", "\xE2\x80\x8B", "\xE3\x80\x80"};
    while (!text.empty()) {
        auto wide = std::find_if(wideBlanks.begin(), wideBlanks.end(),
                                 [&](std::string_view blank) { return text.starts_with(blank); });
        if (wide != wideBlanks.end())
            text.remove_prefix(wide->size());
        else if (std::string_view(" \t\r\n").find(text.front()) != std::string_view::npos)
            text.remove_prefix(1);
        else
            return false;
    }
    return true;
}

bool isNameCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') || character == '/';
}

/// The text from `begin` to the end of the next `end`; empty when either is missing.
std::string_view between(std::string_view text, std::string_view begin, std::string_view end) {
    auto from = text.find(begin);
    if (from == std::string_view::npos) return {};
    auto to = text.find(end, from + begin.size());
    if (to == std::string_view::npos || to == from + begin.size()) return {};
    return text.substr(from, to + end.size() - from);
}

std::string_view tag(std::string_view text) {
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        auto end = text.find('>', at);
        if (end == std::string_view::npos) return {};
        if (end > at + 1 && isNameCharacter(text[at + 1])) return text.substr(at, end + 1 - at);
    }
    return {};
}

/// "[words](address)".
std::string_view link(std::string_view text) {
    std::string_view address = between(text, "](", ")");
    if (address.empty()) return {};
    auto end = static_cast<std::size_t>(address.data() - text.data());
    auto begin = text.substr(0, end).rfind('[');
    return begin == std::string_view::npos ? std::string_view() : text.substr(begin, end + address.size() - begin);
}

/// The first piece of the text that is meant for a program and not for people; empty when there is none.
std::string_view markup(std::string_view text) {
    if (auto found = tag(text); !found.empty()) return found;
    for (auto [begin, end] : {std::pair<std::string_view, std::string_view>{"{{", "}}"},
                              {"{%", "%}"},
                              {"${", "}"},
                              {"{", "}"},
                              {"**", "**"},
                              {"__", "__"},
                              {"`", "`"}}) {
        if (auto found = between(text, begin, end); !found.empty()) return found;
    }
    if (auto found = link(text); !found.empty()) return found;
    for (std::string_view written : {"\\n", "\\r", "\\t", "&#", "&amp;", "&lt;", "&gt;", "&nbsp;", "&quot;"}) {
        if (auto at = text.find(written); at != std::string_view::npos) return text.substr(at, written.size());
    }
    return text.starts_with("# ") || text.starts_with("## ") ? text.substr(0, text.find(' ')) : std::string_view();
}

}  // namespace

Objections unknownType(const CheckedCampaign& checked) {
    if (!applies(InAppMessageObjection::unsupportedType, checked.message())) return {};
    const std::string* type = checked.campaign.body.text("type");
    bool isBadge = type && *type == rawValue(VantixInAppNotificationType::badge);
    std::string what =
        !type ? "no text stands under \"type\"" : "type " + quoted(*type) + (isBadge ? " is not shown" : " is unknown");
    return {{"/body/type", what + ", " + blocks, nearestOrAll(type && !isBadge ? *type : "", wordsOf("/body/type"))}};
}

Objections insecureBannerImage(const CheckedCampaign& checked) {
    if (!applies(InAppMessageObjection::insecureBannerImage, checked.message())) return {};
    return {{"/body/image", "a header or footer takes its image over https only, and the device drops the message",
             "an address that begins with https://"}};
}

Objections bannerWithoutMessage(const CheckedCampaign& checked) {
    if (!applies(InAppMessageObjection::bannerWithoutText, checked.message())) return {};
    return {{"/body/message", "a header or footer without message is never shown, and goes unseen when its turn comes",
             "a text under \"message\""}};
}

Objections badImageAddress(const CheckedCampaign& checked) {
    const std::string& image = checked.message().body.image;
    if (image.empty() || applies(InAppMessageObjection::insecureBannerImage, checked.message())) return {};
    auto url = checked.message().getImageURL();
    if (url && url->isWebAddress()) return {};
    return {{"/body/image",
             quoted(image) + (url ? " is no address that the device fetches" : " is no address") +
                 ", and a placeholder stands in the image's place",
             "an absolute address, such as https://example.com/picture.png, blanks as %20"}};
}

Objections blankTexts(const CheckedCampaign& checked) {
    Objections found;
    for (const ShownText& shown : shownTexts(checked.message())) {
        if (!isBlank(shown.text)) continue;
        found.push_back(
            {shown.place, "the " + shown.what() + " holds blanks only, and takes room for nothing", "a text, or none"});
    }
    return found;
}

Objections markupInTexts(const CheckedCampaign& checked) {
    Objections found;
    for (const ShownText& shown : shownTexts(checked.message())) {
        std::string_view piece = markup(shown.text);
        if (piece.empty()) continue;
        found.push_back({shown.place,
                         quoted(piece) + " in the " + shown.what() + " is shown as it stands, a text has no markup",
                         piece.starts_with("\\n") ? "a line break: one backslash and n in the JSON text"
                                                  : "the words alone, filled in before the campaign is sent"});
    }
    return found;
}

}  // namespace vantix
