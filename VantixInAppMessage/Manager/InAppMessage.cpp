#include "VantixInAppMessage/Manager/InAppMessage.h"

#include "VantixInAppMessage/Manager/VantixInAppDBDefaults.h"

namespace vantix {

const char* InAppMessage::name(Property property) {
    static constexpr std::array<const char*, propertyCount> names = {
        "cuid",     "scope",    "campaignId", "variationId", "senderID", "senderSource",    "custom",
        "priority", "validity", "trigger",    "type",        "body",     "imageIdentifier", "template"};
    return names[static_cast<std::size_t>(property)];
}

FetchRequest InAppMessage::fetchRequest() { return {VantixInAppDBDefaults::defaultEnityName, {}, {}}; }

InAppMessage InAppMessage::from(const Record& record) {
    InAppMessage message;
    for (int at = 0; at < propertyCount; ++at) {
        auto value = record.find(name(static_cast<Property>(at)));
        if (value != record.end()) message.values[static_cast<std::size_t>(at)] = value->second;
    }
    return message;
}

}  // namespace vantix
