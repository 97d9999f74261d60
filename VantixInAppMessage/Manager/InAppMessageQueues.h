#pragma once

#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <string>
#include <vector>

namespace vantix {

/// The messages that wait at one moment, sorted by what triggers them. A plain value that shares immutable messages.
struct InAppMessageQueues {
    using Messages = std::vector<SharedPayload>;

    /// The one message for the next launch; null when there is none.
    SharedPayload broadcastInAppMessage;
    /// Messages to show at once.
    Messages milestoneInAppMessages;
    /// Messages that wait for a named event; after a rebuild, every stored message.
    Messages otherInAppMessages;

    bool milestoneMessagesAvailable() const { return !milestoneInAppMessages.empty(); }
    bool broadCastMessagesAvailable() const { return broadcastInAppMessage != nullptr; }

    /// Empties the queues.
    void reset();
    /// Places one newly stored message. A launch message clears the launch slot and waits in the store.
    void updateQueues(const SharedPayload& message);
    /// Drops the message from the one queue that its trigger names. A rebuild leaves it out until `removalEnded` tells
    /// that the store has dropped it, too.
    void remove(const VantixInAppMessagePayload& message);
    void removalEnded(const std::string& scope);
    /// Replaces the queues by what the store held, without what it was yet to drop. Nothing replaces nothing.
    void rebuild(Messages allMessages);

private:
    void addMilestoneMessage(const SharedPayload& message) { milestoneInAppMessages.push_back(message); }
    void updateOtherMessage(const SharedPayload& message) { otherInAppMessages.push_back(message); }
    void updateMilestoneMessages(const Messages& allMessages);
    void updateBroadcastMessages(Messages allMessages);
    void updateOtherInAppMessages(const Messages& allMessages);

    /// The scopes that the store has been, or is about to be, asked to drop. It drops the first record of each.
    std::vector<std::string> removalsUnderWay_;
};

}  // namespace vantix
