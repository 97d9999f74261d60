#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Values/Export.h"
#include "Platform/Values/URL.h"
#include "Platform/Values/Value.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppBody.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageStyle.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/NotificationTrigger.h"

#include <memory>
#include <optional>
#include <string>

namespace vantix {

struct InAppMessage;

/// One in-app message: routing data, trigger, body and style. A plain value.
struct VANTIX_EXPORT VantixInAppMessagePayload {
    /// The customer it is for; one that is not the current customer's is not read back from the store.
    std::string cuid;
    /// The message's identity inside the module.
    std::string scope;
    std::optional<std::string> campaignId;
    std::optional<std::string> variationId;
    std::string senderID;
    std::string senderSource;
    std::string custom;
    /// Carried as received; decides nothing.
    std::string priority;
    /// Carried as received; decides nothing.
    std::string validity;
    std::string messageId;
    NotificationGateway gateway = NotificationGateway::fcm;
    NotificationTrigger trigger;
    InAppBody body;
    std::string isRead;
    std::string imageIdentifier;
    /// Since 1970. Nothing sets it: neither the push nor the store carries a time.
    std::optional<Duration> createdAt;
    std::string accountId;
    /// "template" on the wire.
    InAppMessageStyle style;

    bool operator==(const VantixInAppMessagePayload&) const = default;

    /// From a push dictionary. Never fails: what is missing or of a wrong kind stays at its default. Each decoding of a
    /// dictionary that is not empty has an image identifier of its own. Usable from any thread.
    static VantixInAppMessagePayload generate(const Dictionary& push);
    /// From a stored record.
    static VantixInAppMessagePayload generate(const InAppMessage& record);

    /// The dictionary form that calls to action and reports use; trigger, body and template are nested dictionaries
    /// here.
    Dictionary getJSON() const;

    /// The image's URL; absent when the text is none.
    std::optional<URL> getImageURL() const;
    /// True for banners, which make no sense without their image.
    bool canDeleteInAppMessageWhenImageDownloadingFailed() const;

    /// All fields in order, those of the nested records too, absent ones as null: one line of JSON, for log lines.
    std::string description() const;
};

/// How a message travels inside the module: decoded once, and shared from there on.
using SharedPayload = std::shared_ptr<const VantixInAppMessagePayload>;

}  // namespace vantix
