#include "VantixInAppMessage/Manager/InAppMessageQueues.h"

#include <algorithm>
#include <iterator>

namespace vantix {

namespace {

using TriggerType = VantixInAppNotificationTriggerType;
using Messages = InAppMessageQueues::Messages;

bool isTriggeredBy(const VantixInAppMessagePayload& message, TriggerType type) {
    return message.trigger.type() == type;
}

void removeFirst(Messages& messages, const std::string& scope) {
    auto found =
        std::find_if(messages.begin(), messages.end(), [&](const auto& message) { return message->scope == scope; });
    if (found != messages.end()) messages.erase(found);
}

}  // namespace

void InAppMessageQueues::reset() {
    broadcastInAppMessage = nullptr;
    milestoneInAppMessages.clear();
    otherInAppMessages.clear();
}

void InAppMessageQueues::updateQueues(const SharedPayload& message) {
    auto type = message->trigger.type();
    if (type == TriggerType::instant) {
        addMilestoneMessage(message);
    } else if (type == TriggerType::appLaunch) {
        broadcastInAppMessage = nullptr;
    } else {
        updateOtherMessage(message);
    }
}

void InAppMessageQueues::remove(const VantixInAppMessagePayload& message) {
    auto type = message.trigger.type();
    if (type == TriggerType::instant) {
        removeFirst(milestoneInAppMessages, message.scope);
    } else if (type == TriggerType::appLaunch) {
        broadcastInAppMessage = nullptr;
    } else {
        removeFirst(otherInAppMessages, message.scope);
    }
    removalsUnderWay_.push_back(message.scope);
}

void InAppMessageQueues::removalEnded(const std::string& scope) {
    auto found = std::find(removalsUnderWay_.begin(), removalsUnderWay_.end(), scope);
    if (found != removalsUnderWay_.end()) removalsUnderWay_.erase(found);
}

void InAppMessageQueues::rebuild(Messages allMessages) {
    for (const std::string& scope : removalsUnderWay_) removeFirst(allMessages, scope);
    if (allMessages.empty()) return;

    updateMilestoneMessages(allMessages);
    updateOtherInAppMessages(allMessages);
    broadcastInAppMessage = nullptr;
    if (!milestoneMessagesAvailable()) updateBroadcastMessages(std::move(allMessages));
}

void InAppMessageQueues::updateMilestoneMessages(const Messages& allMessages) {
    milestoneInAppMessages.clear();
    std::copy_if(allMessages.begin(), allMessages.end(), std::back_inserter(milestoneInAppMessages),
                 [](const SharedPayload& message) { return isTriggeredBy(*message, TriggerType::instant); });
}

/// Every stored message waits here, too, so that an event can name it.
void InAppMessageQueues::updateOtherInAppMessages(const Messages& allMessages) { otherInAppMessages = allMessages; }

/// The newest launch message. Messages without a time of creation keep the store's order.
void InAppMessageQueues::updateBroadcastMessages(Messages allMessages) {
    std::stable_sort(allMessages.begin(), allMessages.end(), [](const SharedPayload& a, const SharedPayload& b) {
        return a->createdAt && b->createdAt && *a->createdAt < *b->createdAt;
    });
    auto newest = std::find_if(allMessages.rbegin(), allMessages.rend(), [](const SharedPayload& message) {
        return isTriggeredBy(*message, TriggerType::appLaunch);
    });
    broadcastInAppMessage = newest == allMessages.rend() ? nullptr : *newest;
}

}  // namespace vantix
