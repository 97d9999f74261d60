#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageTypes.h"

#include "Platform/Values/WordTable.h"

namespace vantix {

namespace {

using Type = VantixInAppNotificationType;
using TriggerType = VantixInAppNotificationTriggerType;
using SelectionType = InAppFeedbackSelectionType;

constexpr WordTable<Type, 8> types{{{Type::badge, "BADGE"},
                                    {Type::popup, "POPUP"},
                                    {Type::fullScreen, "FULLSCREEN"},
                                    {Type::header, "HEADER"},
                                    {Type::footer, "FOOTER"},
                                    {Type::rating, "RATING"},
                                    {Type::feedback, "FEEDBACK"},
                                    {Type::appRating, "APPRATING"}}};

constexpr WordTable<TriggerType, 2> triggerTypes{
    {{TriggerType::instant, "INSTANT"}, {TriggerType::appLaunch, "APP_LAUNCH"}}};

constexpr WordTable<SelectionType, 2> selectionTypes{
    {{SelectionType::singleSelection, "singleSelection"}, {SelectionType::multiSelection, "multiSelection"}}};

}  // namespace

std::string_view rawValue(VantixInAppNotificationType type) { return types.word(type); }

std::string_view rawValue(VantixInAppNotificationTriggerType type) { return triggerTypes.word(type); }

std::string_view rawValue(InAppFeedbackSelectionType type) { return selectionTypes.word(type); }

std::optional<VantixInAppNotificationType> inAppNotificationType(std::string_view rawValue) {
    return types.value(rawValue);
}

std::optional<VantixInAppNotificationTriggerType> inAppNotificationTriggerType(std::string_view rawValue) {
    return triggerTypes.value(rawValue);
}

std::optional<InAppFeedbackSelectionType> inAppFeedbackSelectionType(std::string_view rawValue) {
    return selectionTypes.value(rawValue);
}

}  // namespace vantix
