#pragma once

#include "Platform/Values/Export.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageTypes.h"

#include <optional>
#include <string>

namespace vantix {

/// A message on the screen, or on its way there, as the application is told of it.
struct PresentedMessage {
    std::string scope;
    std::optional<std::string> campaignId;
    VantixInAppNotificationType type = VantixInAppNotificationType::popup;

    bool operator==(const PresentedMessage&) const = default;
};

/// What an application may say about messages on its screen, and what it learns of them. Main thread only; held weakly.
class VANTIX_EXPORT InAppMessagePresentationDelegate {
public:
    virtual ~InAppMessagePresentationDelegate() = default;

    /// Asked before a message that could be shown is put up. False means "not now": the message stays where it waits,
    /// ahead of whatever comes later, and is tried again at the next occasion:
    /// `ApplicationNotification::sceneDidActivate`, an activation of the application, the end of a pause. Must not show
    /// or dismiss anything.
    virtual bool shouldPresent(const PresentedMessage&) { return true; }
    /// The message has a window. Its content is laid out on the main queue's next turn.
    virtual void didPresent(const PresentedMessage&) {}
    /// The message is over; its window goes on the main queue's next turn. Once for each `didPresent`.
    virtual void didDismiss(const PresentedMessage&) {}
};

}  // namespace vantix
