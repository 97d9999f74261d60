#include "VantixInAppMessage/Manager/InAppEventReporter.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "VantixCore/VantixDomainFactory.h"
#include "VantixInAppMessage/Core/InAppEventAttributes.h"

#include <functional>
#include <utility>

namespace vantix {

namespace {

std::shared_ptr<DispatchWorkItem> workItem(std::function<void()> block) {
    return std::make_shared<DispatchWorkItem>(QualityOfService::utility, WorkItemFlags::inheritQoS, std::move(block));
}

}  // namespace

InAppEventReporter::InAppEventReporter(std::shared_ptr<VantixCore> vantixCore)
    : vantixCore_(std::move(vantixCore)),
      queue_(Platform::current()->dispatcher->makeSerialQueue(VantixDomainFactory::getDomain("VantixInAppMessaging"),
                                                              QualityOfService::utility)) {}

void InAppEventReporter::sendInAppMessageShownEvent(const SharedPayload& message) {
    queue_->async(workItemToSendDLREvent(VantixDLREvents::inAppMessageShown, message));
}

void InAppEventReporter::sendInAppMessageDismissedEvent(const SharedPayload& message) {
    queue_->async(workItemToSendDLREvent(VantixDLREvents::inAppMessageDismissed, message));
}

void InAppEventReporter::sendInAppMessageClickedEvent(const SharedPayload& message) {
    queue_->async(workItemToSendDLREvent(VantixDLREvents::inAppMessageClicked, message));
}

void InAppEventReporter::sendInAppRatingEvent(const SharedPayload& message, std::optional<int> rating) {
    queue_->async(workItemToSendBehavirolEvent(VantixBehavioralEvents::inAppMessageRating,
                                               getAttributesForEventReporting(*message, false, rating)));
}

void InAppEventReporter::sendInAppFeedbackevent(const SharedPayload& message,
                                                const std::optional<std::string>& feedback,
                                                const std::optional<std::vector<int>>& feedbackOptions) {
    queue_->async(
        workItemToSendBehavirolEvent(VantixBehavioralEvents::inAppMessageFeedback,
                                     getAttributesForEventReporting(*message, false, {}, feedback, feedbackOptions)));
}

void InAppEventReporter::sendInAppMessageBehavirolEvent(VantixBehavioralEvents type, const SharedPayload& message) {
    queue_->async(workItemToSendBehavirolEvent(type, getAttributesForEventReporting(*message)));
}

std::shared_ptr<DispatchWorkItem> InAppEventReporter::workItemToSendDLREvent(VantixDLREvents type,
                                                                             const SharedPayload& message) const {
    return workItem(
        [core = vantixCore_, type, message] { core->reportDLREvent(type, getAttributesForEventReporting(*message)); });
}

std::shared_ptr<DispatchWorkItem> InAppEventReporter::workItemToSendBehavirolEvent(VantixBehavioralEvents type,
                                                                                   Dictionary attributes) const {
    return workItem([core = vantixCore_, type, attributes = std::move(attributes)] {
        core->reportBehavioralEvent(rawValue(type), attributes);
    });
}

}  // namespace vantix
