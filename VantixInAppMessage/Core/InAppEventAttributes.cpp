#include "VantixInAppMessage/Core/InAppEventAttributes.h"

#include "VantixCore/VantixConstants.h"

namespace vantix {

Dictionary getAttributesForEventReporting(const VantixInAppMessagePayload& message, bool includeType,
                                          std::optional<int> rating, const std::optional<std::string>& feedback,
                                          const std::optional<std::vector<int>>& feedbackOptions) {
    namespace Keys = VantixConstants::Keys::APIRequestKeys;
    Dictionary attributes{{Keys::scope, message.scope},
                          {Keys::cuid, message.cuid},
                          {Keys::senderId, message.senderID},
                          {Keys::result, std::string(rawValue(NotificationEventResult::success))}};
    if (includeType) attributes.set(Keys::type, std::string(rawValue(VantixNotificationType::inapp)));
    if (rating) attributes.set(Keys::rating, *rating);
    if (feedback) attributes.set(Keys::feedback, *feedback);
    if (feedbackOptions && !feedbackOptions->empty()) {
        attributes.set(Keys::feedbackOptions, List(feedbackOptions->begin(), feedbackOptions->end()));
    }
    attributes.set(Keys::messageId, message.messageId);
    attributes.set(Keys::gateway, VantixConstants::fcmGateway);
    return attributes;
}

}  // namespace vantix
