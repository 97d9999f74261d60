#pragma once

#include "Platform/Values/Export.h"

#include <array>
#include <optional>
#include <string_view>

namespace vantix {

/// Which template shows a message. Badge messages are stored and never shown.
enum class VantixInAppNotificationType { badge, popup, fullScreen, header, footer, rating, feedback, appRating };

/// The types that may be shown.
inline constexpr std::array supportedInAppMessageTypes = {
    VantixInAppNotificationType::popup,      VantixInAppNotificationType::footer, VantixInAppNotificationType::header,
    VantixInAppNotificationType::fullScreen, VantixInAppNotificationType::rating, VantixInAppNotificationType::feedback,
    VantixInAppNotificationType::appRating,
};

/// Event names with a meaning of their own; every other name is that of a captured event.
enum class VantixInAppNotificationTriggerType { instant, appLaunch };

enum class InAppFeedbackSelectionType { singleSelection, multiSelection };

/// The wire word of a case.
VANTIX_EXPORT std::string_view rawValue(VantixInAppNotificationType type);
VANTIX_EXPORT std::string_view rawValue(VantixInAppNotificationTriggerType type);
VANTIX_EXPORT std::string_view rawValue(InAppFeedbackSelectionType type);

/// The case of a wire word; absent for any other text. Letter case counts.
VANTIX_EXPORT std::optional<VantixInAppNotificationType> inAppNotificationType(std::string_view rawValue);
VANTIX_EXPORT std::optional<VantixInAppNotificationTriggerType> inAppNotificationTriggerType(std::string_view rawValue);
VANTIX_EXPORT std::optional<InAppFeedbackSelectionType> inAppFeedbackSelectionType(std::string_view rawValue);

}  // namespace vantix
