#pragma once

#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// What the window of a message may ask of whoever put it up. Main thread only.
class InAppMessageActions {
public:
    virtual ~InAppMessageActions() = default;

    /// Takes the message off the screen and starts the pause, after which the next one is tried.
    virtual void dismissInAppMessage(const SharedPayload& message, bool sendDismissedEvent) = 0;
    /// Carries out a button's call to action, reports it and dismisses the message; an unknown type is reported as a
    /// close and dismisses nothing. The feedback options are positions among those of the message.
    virtual void handleInAppMessageButtonAction(const SharedPayload& message, const std::optional<InAppCTA>& cta,
                                                std::optional<int> rating, const std::optional<std::string>& feedback,
                                                const std::optional<std::vector<int>>& feedbackOptions) = 0;
};

}  // namespace vantix
