#pragma once

#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// The messages that wait at one moment, sorted by what triggers them. A plain value that shares immutable messages.
struct InAppMessageQueues {
    using Message = std::shared_ptr<const VantixInAppMessagePayload>;
    using Messages = std::vector<Message>;

    /// The one message for the next launch.
    Message broadcastInAppMessage;
    /// Messages to show at once.
    Messages milestoneInAppMessages;
    /// Messages that wait for a named event; after a rebuild, every stored message.
    Messages otherInAppMessages;

    bool milestoneMessagesAvailable() const { return !milestoneInAppMessages.empty(); }
    bool broadCastMessagesAvailable() const { return broadcastInAppMessage != nullptr; }

    /// Empties the queues.
    void reset();
    /// Places one newly stored message. A launch message clears the launch slot and waits in the store.
    void updateQueues(const Message& message);
    /// Drops the message from the one queue that its trigger names.
    void remove(const VantixInAppMessagePayload& message);

    /// From here on, until the rebuild arrives, what is removed is remembered, because the store is read before it
    /// learns of it.
    void beginRebuild();
    /// Replaces the queues by what the store held, without what was removed meanwhile.
    void finishRebuild(Messages allMessages);

private:
    void addMilestoneMessage(const Message& message) { milestoneInAppMessages.push_back(message); }
    void updateOtherMessage(const Message& message) { otherInAppMessages.push_back(message); }
    void updateMilestoneMessages(const Messages& allMessages);
    void updateBroadcastMessages(Messages allMessages);
    void updateOtherInAppMessages(const Messages& allMessages);

    int pendingRebuilds_ = 0;
    std::vector<std::string> removedMeanwhile_;
};

/// What a trigger's event name means; absent for the name of a captured event.
std::optional<VantixInAppNotificationTriggerType> triggerType(const VantixInAppMessagePayload& message);

}  // namespace vantix
