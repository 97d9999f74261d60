#include "VantixCore/VantixEvents.h"

namespace vantix {

std::string_view rawValue(VantixDLREvents event) {
    switch (event) {
        case VantixDLREvents::inAppMessageShown:
            return "inAppMessageShown";
        case VantixDLREvents::inAppMessageClicked:
            return "inAppMessageClicked";
        case VantixDLREvents::inAppMessageDismissed:
            return "inAppMessageDismissed";
    }
    return {};
}

std::string_view rawValue(VantixBehavioralEvents event) {
    switch (event) {
        case VantixBehavioralEvents::inAppMessageClose:
            return "inAppMessageClose";
        case VantixBehavioralEvents::inAppMessageRating:
            return "inAppMessageRating";
        case VantixBehavioralEvents::inAppMessageFeedback:
            return "inAppMessageFeedback";
        case VantixBehavioralEvents::inAppMessageAppRating:
            return "inAppMessageAppRating";
    }
    return {};
}

std::string_view rawValue(VantixNotificationType type) {
    switch (type) {
        case VantixNotificationType::push:
            return "push";
        case VantixNotificationType::inapp:
            return "inapp";
    }
    return {};
}

std::string_view rawValue(NotificationEventResult result) {
    switch (result) {
        case NotificationEventResult::success:
            return "success";
        case NotificationEventResult::failure:
            return "failure";
    }
    return {};
}

std::string_view rawValue(NotificationGateway gateway) {
    switch (gateway) {
        case NotificationGateway::fcm:
            return "fcm";
        case NotificationGateway::apns:
            return "apns";
    }
    return {};
}

std::string_view rawValue(CTAActionType type) {
    switch (type) {
        case CTAActionType::external:
            return "EXTERNAL";
        case CTAActionType::deepLink:
            return "DEEPLINK";
        case CTAActionType::rating:
            return "RATING";
        case CTAActionType::feedback:
            return "FEEDBACK";
        case CTAActionType::appRating:
            return "APPRATING";
    }
    return {};
}

std::optional<NotificationGateway> notificationGateway(std::string_view word) {
    for (auto gateway : {NotificationGateway::fcm, NotificationGateway::apns}) {
        if (rawValue(gateway) == word) return gateway;
    }
    return {};
}

}  // namespace vantix
