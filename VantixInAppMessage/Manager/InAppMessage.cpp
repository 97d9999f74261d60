#include "VantixInAppMessage/Manager/InAppMessage.h"

#include "Platform/Values/WordTable.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/VantixInAppDBDefaults.h"

#include <utility>

namespace vantix {

namespace {

using Property = InAppMessage::Property;

constexpr WordTable<Property, InAppMessage::propertyCount> names{{{Property::cuid, "cuid"},
                                                                  {Property::scope, "scope"},
                                                                  {Property::campaignId, "campaignId"},
                                                                  {Property::variationId, "variationId"},
                                                                  {Property::senderID, "senderID"},
                                                                  {Property::senderSource, "senderSource"},
                                                                  {Property::custom, "custom"},
                                                                  {Property::priority, "priority"},
                                                                  {Property::validity, "validity"},
                                                                  {Property::trigger, "trigger"},
                                                                  {Property::type, "type"},
                                                                  {Property::body, "body"},
                                                                  {Property::imageIdentifier, "imageIdentifier"},
                                                                  {Property::templateText, "template"}}};

}  // namespace

std::string InAppMessage::name(Property property) { return std::string(names.word(property)); }

FetchRequest InAppMessage::fetchRequest() { return {VantixInAppDBDefaults::defaultEnityName, {}, {}}; }

InAppMessage InAppMessage::from(Record record) {
    InAppMessage message;
    for (int at = 0; at < propertyCount; ++at) {
        auto value = record.find(name(static_cast<Property>(at)));
        if (value != record.end()) message.values[static_cast<std::size_t>(at)] = std::move(value->second);
    }
    return message;
}

InAppMessage InAppMessage::from(const VantixInAppMessagePayload& message) {
    InAppMessage record;
    auto set = [&](Property property, const std::optional<std::string>& text) {
        record.values[static_cast<std::size_t>(property)] = text;
    };
    set(Property::cuid, message.cuid);
    set(Property::scope, message.scope);
    set(Property::campaignId, message.campaignId);
    set(Property::variationId, message.variationId);
    set(Property::senderID, message.senderID);
    set(Property::senderSource, message.senderSource);
    set(Property::custom, message.custom);
    set(Property::priority, message.priority);
    set(Property::validity, message.validity);
    set(Property::trigger, message.trigger.textRepresentation);
    set(Property::body, message.body.textRepresentation);
    set(Property::imageIdentifier, message.imageIdentifier);
    set(Property::templateText, message.style.textRepresentation);
    return record;
}

}  // namespace vantix
