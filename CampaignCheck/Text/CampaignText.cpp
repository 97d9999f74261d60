#include "CampaignCheck/Text/CampaignText.h"

#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vantix {

namespace {

/// What stands deeper in a text with more values than anyone writes by hand is found at its container.
constexpr std::size_t mostPlaces = 100'000;

bool beginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

bool holdsCampaignJSON(const std::string& pointer) {
    for (const char* key :
         {NotificationPayloadKeys::trigger, NotificationPayloadKeys::body, InAppMessagePayloadKeys::templateKey}) {
        if (pointer.size() > 1 && pointer.compare(1, pointer.npos, key) == 0) return true;
    }
    return false;
}

}  // namespace

CampaignText::CampaignText(std::string text) : text_(std::move(text)) {
    auto keepPlace = [this](const std::string& pointer, JSONPlace place) {
        if (places_.size() < mostPlaces) places_[pointer] = place;
    };
    auto keepMistake = [this](const std::string& pointer, std::size_t offset) { mistakes_[pointer] = offset; };
    walkJSON(text_, {.holdsJSON = holdsCampaignJSON, .value = keepPlace, .mistake = keepMistake});
    for (std::size_t at = 0; at < text_.size(); ++at) {
        if (text_[at] == '\n') lines_.push_back(at + 1);
    }
}

TextPosition CampaignText::positionOfValue(const std::string& pointer) const { return position(place(pointer).value); }

TextPosition CampaignText::positionOfKey(const std::string& pointer) const { return position(place(pointer).key); }

JSONPlace CampaignText::place(std::string pointer) const {
    while (true) {
        auto found = places_.find(pointer);
        if (found != places_.end()) return found->second;
        if (pointer.empty()) return {};
        pointer.resize(pointer.rfind('/'));
    }
}

TextPosition CampaignText::position(std::size_t offset) const {
    auto line = std::prev(std::upper_bound(lines_.begin(), lines_.end(), offset));
    auto before = std::ranges::count_if(std::string_view(text_).substr(*line, offset - *line), beginsCharacter);
    return {static_cast<int>(line - lines_.begin()) + 1, static_cast<int>(before) + 1};
}

}  // namespace vantix
