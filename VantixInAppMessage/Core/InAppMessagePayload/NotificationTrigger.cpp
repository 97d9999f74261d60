#include "VantixInAppMessage/Core/InAppMessagePayload/NotificationTrigger.h"

#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/NestedJSON.h"

namespace vantix {

namespace {

constexpr LogSource log{"Core/InAppMessagePayload/VantixInAppMessagePayload"};

}  // namespace

NotificationTrigger NotificationTrigger::generate(const std::string& text) {
    auto dictionary = dictionaryFromText(text, "NotificationTrigger not available due to invalid json response",
                                         "error occurred during json generation for Trigger:", log);
    if (!dictionary) return {};

    NotificationTrigger trigger;
    trigger.textRepresentation = text;
    readText(*dictionary, NotificationPayloadKeys::eventName, trigger.eventName);
    if (auto attributes = dictionary->dictionary(NotificationPayloadKeys::attributes)) trigger.attributes = *attributes;
    return trigger;
}

Dictionary NotificationTrigger::getJSON() const {
    return {{NotificationPayloadKeys::eventName, eventName}, {NotificationPayloadKeys::attributes, attributes}};
}

Dictionary NotificationTrigger::description() const {
    return {{"textRepresentation", textRepresentation}, {"eventName", eventName}, {"attributes", attributes}};
}

}  // namespace vantix
