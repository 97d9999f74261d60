#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Value.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageTypes.h"

#include <optional>
#include <string>

namespace vantix {

/// The event that makes a message eligible.
struct VANTIX_EXPORT NotificationTrigger {
    /// The JSON text that this trigger was parsed from; the store keeps it.
    std::string textRepresentation;
    std::string eventName;
    /// What the event must carry, too.
    Dictionary attributes;

    bool operator==(const NotificationTrigger&) const = default;

    /// Never fails: a text that is no JSON object gives the empty trigger and one error line.
    static NotificationTrigger generate(const std::string& text);
    Dictionary getJSON() const;
    /// All fields in order, for log lines.
    Dictionary description() const;

    /// What the event name means; absent for the name of a captured event.
    std::optional<VantixInAppNotificationTriggerType> type() const { return inAppNotificationTriggerType(eventName); }
};

}  // namespace vantix
