#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageTypes.h"

#include <array>
#include <cstddef>

namespace vantix {

namespace {

// In the order of the cases.
constexpr std::array<std::string_view, 8> notificationTypes = {"BADGE",  "POPUP",  "FULLSCREEN", "HEADER",
                                                               "FOOTER", "RATING", "FEEDBACK",   "APPRATING"};
constexpr std::array<std::string_view, 2> triggerTypes = {"INSTANT", "APP_LAUNCH"};
constexpr std::array<std::string_view, 2> selectionTypes = {"singleSelection", "multiSelection"};

template <typename Case, std::size_t count>
std::optional<Case> caseOf(const std::array<std::string_view, count>& words, std::string_view word) {
    for (std::size_t at = 0; at < count; ++at) {
        if (words[at] == word) return static_cast<Case>(at);
    }
    return {};
}

}  // namespace

std::string_view rawValue(VantixInAppNotificationType type) {
    return notificationTypes[static_cast<std::size_t>(type)];
}

std::string_view rawValue(VantixInAppNotificationTriggerType type) {
    return triggerTypes[static_cast<std::size_t>(type)];
}

std::string_view rawValue(InAppFeedbackSelectionType type) { return selectionTypes[static_cast<std::size_t>(type)]; }

std::optional<VantixInAppNotificationType> inAppNotificationType(std::string_view rawValue) {
    return caseOf<VantixInAppNotificationType>(notificationTypes, rawValue);
}

std::optional<VantixInAppNotificationTriggerType> inAppNotificationTriggerType(std::string_view rawValue) {
    return caseOf<VantixInAppNotificationTriggerType>(triggerTypes, rawValue);
}

std::optional<InAppFeedbackSelectionType> inAppFeedbackSelectionType(std::string_view rawValue) {
    return caseOf<InAppFeedbackSelectionType>(selectionTypes, rawValue);
}

}  // namespace vantix
