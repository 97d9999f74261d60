#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// Where the module runs. In `unittest` messages are shown without a window.
enum class Env { dev, unittest };

/// Delivery reports.
enum class VantixDLREvents { inAppMessageShown, inAppMessageClicked, inAppMessageDismissed };

/// Behavioural events.
enum class VantixBehavioralEvents {
    inAppMessageClose,
    inAppMessageRating,
    inAppMessageFeedback,
    inAppMessageAppRating
};

enum class VantixNotificationType { push, inapp };

enum class NotificationEventResult { success, failure };

enum class NotificationGateway { fcm, apns };

enum class CTAActionType { external, deepLink, rating, feedback, appRating };

/// The wire word of a case.
VANTIX_EXPORT std::string_view rawValue(VantixDLREvents event);
VANTIX_EXPORT std::string_view rawValue(VantixBehavioralEvents event);
VANTIX_EXPORT std::string_view rawValue(VantixNotificationType type);
VANTIX_EXPORT std::string_view rawValue(NotificationEventResult result);
VANTIX_EXPORT std::string_view rawValue(NotificationGateway gateway);
VANTIX_EXPORT std::string_view rawValue(CTAActionType type);

/// Absent for an unknown word; letter case counts.
VANTIX_EXPORT std::optional<NotificationGateway> notificationGateway(std::string_view rawValue);
VANTIX_EXPORT std::optional<CTAActionType> ctaActionType(std::string_view rawValue);

/// An event that the host captured.
struct EventProtocol {
    std::string name;
    std::optional<Dictionary> attributes;
};

/// A call to action as the core library carries it out.
struct CTA {
    std::optional<std::string> actionText;
    std::string action;
    std::string type;
};

}  // namespace vantix
