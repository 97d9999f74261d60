#include "VantixCore/VantixEvents.h"

#include "Platform/Values/WordTable.h"

namespace vantix {

namespace {

constexpr WordTable<VantixDLREvents, 3> deliveryReports{
    {{VantixDLREvents::inAppMessageShown, "inAppMessageShown"},
     {VantixDLREvents::inAppMessageClicked, "inAppMessageClicked"},
     {VantixDLREvents::inAppMessageDismissed, "inAppMessageDismissed"}}};

constexpr WordTable<VantixBehavioralEvents, 4> behavioralEvents{
    {{VantixBehavioralEvents::inAppMessageClose, "inAppMessageClose"},
     {VantixBehavioralEvents::inAppMessageRating, "inAppMessageRating"},
     {VantixBehavioralEvents::inAppMessageFeedback, "inAppMessageFeedback"},
     {VantixBehavioralEvents::inAppMessageAppRating, "inAppMessageAppRating"}}};

constexpr WordTable<VantixNotificationType, 2> notificationTypes{
    {{VantixNotificationType::push, "push"}, {VantixNotificationType::inapp, "inapp"}}};

constexpr WordTable<NotificationEventResult, 2> results{
    {{NotificationEventResult::success, "success"}, {NotificationEventResult::failure, "failure"}}};

constexpr WordTable<NotificationGateway, 2> gateways{
    {{NotificationGateway::fcm, "fcm"}, {NotificationGateway::apns, "apns"}}};

constexpr WordTable<CTAActionType, 5> actionTypes{{{CTAActionType::external, "EXTERNAL"},
                                                   {CTAActionType::deepLink, "DEEPLINK"},
                                                   {CTAActionType::rating, "RATING"},
                                                   {CTAActionType::feedback, "FEEDBACK"},
                                                   {CTAActionType::appRating, "APPRATING"}}};

}  // namespace

std::string_view rawValue(VantixDLREvents event) { return deliveryReports.word(event); }

std::string_view rawValue(VantixBehavioralEvents event) { return behavioralEvents.word(event); }

std::string_view rawValue(VantixNotificationType type) { return notificationTypes.word(type); }

std::string_view rawValue(NotificationEventResult result) { return results.word(result); }

std::string_view rawValue(NotificationGateway gateway) { return gateways.word(gateway); }

std::string_view rawValue(CTAActionType type) { return actionTypes.word(type); }

std::optional<NotificationGateway> notificationGateway(std::string_view word) { return gateways.value(word); }

std::optional<CTAActionType> ctaActionType(std::string_view word) { return actionTypes.value(word); }

}  // namespace vantix
