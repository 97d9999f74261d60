#include "VantixInAppMessage/Manager/InAppMessage.h"

#include "Platform/Values/WordTable.h"
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

}  // namespace vantix
