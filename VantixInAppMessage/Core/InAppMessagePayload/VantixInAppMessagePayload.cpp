#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include "Platform/Values/JSON.h"
#include "Platform/Values/UUID.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/NestedJSON.h"
#include "VantixInAppMessage/Manager/InAppMessage.h"

namespace vantix {

namespace RequestKeys = VantixConstants::Keys::APIRequestKeys;

VantixInAppMessagePayload VantixInAppMessagePayload::generate(const Dictionary& push) {
    VantixInAppMessagePayload payload;
    if (push.isEmpty()) return payload;

    readText(push, RequestKeys::senderSource, payload.senderSource);
    readText(push, RequestKeys::scope, payload.scope);
    readText(push, RequestKeys::custom, payload.custom);
    readText(push, NotificationPayloadKeys::priority, payload.priority);
    readText(push, NotificationPayloadKeys::validity, payload.validity);
    readText(push, NotificationPayloadKeys::messageId, payload.messageId);
    if (auto word = push.text(NotificationPayloadKeys::gateway)) {
        payload.gateway = notificationGateway(*word).value_or(payload.gateway);
    }
    readText(push, RequestKeys::cuid, payload.cuid);
    readText(push, RequestKeys::senderId, payload.senderID);
    readText(push, NotificationPayloadKeys::campaignId, payload.campaignId);
    readText(push, NotificationPayloadKeys::variationId, payload.variationId);
    if (auto text = push.text(NotificationPayloadKeys::trigger)) payload.trigger = NotificationTrigger::generate(*text);
    if (auto text = push.text(NotificationPayloadKeys::body)) payload.body = InAppBody::generate(*text);
    readText(push, NotificationPayloadKeys::accountId, payload.accountId);
    if (auto text = push.text(InAppMessagePayloadKeys::templateKey)) payload.style = InAppMessageStyle::generate(*text);
    payload.imageIdentifier = makeUUID() + "-" + payload.scope;
    return payload;
}

VantixInAppMessagePayload VantixInAppMessagePayload::generate(const InAppMessage& record) {
    using Property = InAppMessage::Property;
    auto text = [&](Property property) { return record[property].value_or(""); };
    VantixInAppMessagePayload payload;
    payload.cuid = text(Property::cuid);
    payload.scope = text(Property::scope);
    payload.campaignId = record[Property::campaignId];
    payload.variationId = record[Property::variationId];
    payload.senderID = text(Property::senderID);
    payload.senderSource = text(Property::senderSource);
    payload.custom = text(Property::custom);
    payload.priority = text(Property::priority);
    payload.validity = text(Property::validity);
    if (auto& trigger = record[Property::trigger]) payload.trigger = NotificationTrigger::generate(*trigger);
    if (auto& body = record[Property::body]) payload.body = InAppBody::generate(*body);
    payload.imageIdentifier = text(Property::imageIdentifier);
    if (auto& style = record[Property::templateText]) payload.style = InAppMessageStyle::generate(*style);
    return payload;
}

Dictionary VantixInAppMessagePayload::getJSON() const {
    Dictionary dictionary{{RequestKeys::senderSource, senderSource},
                          {RequestKeys::scope, scope},
                          {RequestKeys::custom, custom},
                          {NotificationPayloadKeys::priority, priority},
                          {NotificationPayloadKeys::validity, validity},
                          {NotificationPayloadKeys::messageId, messageId},
                          {NotificationPayloadKeys::gateway, std::string(rawValue(gateway))},
                          {RequestKeys::cuid, cuid},
                          {RequestKeys::senderId, senderID}};
    if (campaignId) dictionary.set(NotificationPayloadKeys::campaignId, *campaignId);
    if (variationId) dictionary.set(NotificationPayloadKeys::variationId, *variationId);
    dictionary.set(NotificationPayloadKeys::trigger, trigger.getJSON());
    dictionary.set(NotificationPayloadKeys::body, body.getJSON());
    dictionary.set(NotificationPayloadKeys::accountId, accountId);
    dictionary.set(InAppMessagePayloadKeys::templateKey, style.getJSON());
    dictionary.set(NotificationPayloadKeys::imageIdentifier, imageIdentifier);
    return dictionary;
}

std::optional<URL> VantixInAppMessagePayload::getImageURL() const { return URL::parse(body.image); }

bool VantixInAppMessagePayload::canDeleteInAppMessageWhenImageDownloadingFailed() const { return body.isBanner(); }

std::string VantixInAppMessagePayload::description() const {
    return toJSON(Dictionary{
        {"cuid", cuid},
        {"scope", scope},
        {"campaignId", orNull(campaignId)},
        {"variationId", orNull(variationId)},
        {"senderID", senderID},
        {"senderSource", senderSource},
        {"custom", custom},
        {"priority", priority},
        {"validity", validity},
        {"messageId", messageId},
        {"gateway", std::string(rawValue(gateway))},
        {"trigger", trigger.description()},
        {"body", body.description()},
        {"isRead", isRead},
        {"imageIdentifier", imageIdentifier},
        {"createdAt", createdAt ? Value(std::chrono::duration<double>(*createdAt).count()) : Value()},
        {"accountId", accountId},
        {"template", style.description()},
    });
}

}  // namespace vantix
