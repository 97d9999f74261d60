#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "VantixCore/VantixCore.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// Reports what happens to a message, each event on a serial queue in the background. What was handed over is reported
/// even if the reporter is gone by then. Usable from any thread.
class InAppEventReporter {
public:
    explicit InAppEventReporter(std::shared_ptr<VantixCore> vantixCore);

    void sendInAppMessageShownEvent(const SharedPayload& message);
    void sendInAppMessageDismissedEvent(const SharedPayload& message);
    void sendInAppMessageClickedEvent(const SharedPayload& message);
    void sendInAppRatingEvent(const SharedPayload& message, std::optional<int> rating);
    /// The options are positions among those of the message.
    void sendInAppFeedbackevent(const SharedPayload& message, const std::optional<std::string>& feedback,
                                const std::optional<std::vector<int>>& feedbackOptions);
    void sendInAppMessageBehavirolEvent(VantixBehavioralEvents type, const SharedPayload& message);

private:
    std::shared_ptr<DispatchWorkItem> workItemToSendDLREvent(VantixDLREvents type, const SharedPayload& message) const;
    std::shared_ptr<DispatchWorkItem> workItemToSendBehavirolEvent(VantixBehavioralEvents type,
                                                                   Dictionary attributes) const;

    std::shared_ptr<VantixCore> vantixCore_;
    std::shared_ptr<DispatchQueue> queue_;
};

}  // namespace vantix
