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

}  // namespace

void InAppMessageQueues::reset() {
    broadcastInAppMessage = nullptr;
    milestoneInAppMessages = {};
    otherInAppMessages = {};
}

void InAppMessageQueues::forget() {
    reset();
    rebuiltMessages = std::make_shared<Messages>();
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
        milestoneInAppMessages.removeFirst(message.scope);
    } else if (type == TriggerType::appLaunch) {
        broadcastInAppMessage = nullptr;
    } else {
        otherInAppMessages.removeFirst(message.scope);
    }
    removalsUnderWay_ = removalsUnderWay_.inserting({message.scope, nextRemoval_++});
}

void InAppMessageQueues::removalEnded(const std::string& scope) {
    const Removal* found = removalsUnderWay_.first([&](const Removal& removal) { return removal.first <=> scope; },
                                                   [](const Removal&) { return true; });
    if (found) removalsUnderWay_ = removalsUnderWay_.removing(*found);
}

void InAppMessageQueues::rebuild(Messages allMessages) {
    rebuiltMessages = std::make_shared<Messages>(std::move(allMessages));
    InAppMessageQueue waiting(*rebuiltMessages);
    removalsUnderWay_.forEach([&](const Removal& removal) { waiting.removeFirst(removal.first); });
    if (waiting.isEmpty()) return;

    updateMilestoneMessages(waiting.messages());
    // Every stored message waits here, too, so that an event can name it.
    updateOtherInAppMessages(waiting);
    broadcastInAppMessage = nullptr;
    if (!milestoneMessagesAvailable()) updateBroadcastMessages(waiting.messages());
}

void InAppMessageQueues::updateMilestoneMessages(const Messages& allMessages) {
    Messages instant;
    std::copy_if(allMessages.begin(), allMessages.end(), std::back_inserter(instant),
                 [](const SharedPayload& message) { return isTriggeredBy(*message, TriggerType::instant); });
    milestoneInAppMessages = InAppMessageQueue(instant);
}

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
