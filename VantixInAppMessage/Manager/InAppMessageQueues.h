#pragma once

#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/ImmutableSet.h"
#include "VantixInAppMessage/Manager/InAppMessageQueue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace vantix {

/// The messages that wait at one moment, sorted by what triggers them. A plain value that shares immutable messages and
/// is cheap to copy.
struct InAppMessageQueues {
    using Messages = InAppMessageQueue::Messages;

    /// The one message for the next launch; null when there is none.
    SharedPayload broadcastInAppMessage;
    /// Messages to show at once.
    InAppMessageQueue milestoneInAppMessages;
    /// Messages that wait for a named event; after a rebuild, every stored message.
    InAppMessageQueue otherInAppMessages;
    /// What the last rebuild brought, whatever became of it; the next one need not decode it again. Never null.
    std::shared_ptr<const Messages> rebuiltMessages = std::make_shared<Messages>();

    bool milestoneMessagesAvailable() const { return !milestoneInAppMessages.isEmpty(); }
    bool broadCastMessagesAvailable() const { return broadcastInAppMessage != nullptr; }

    /// Empties the queues.
    void reset();
    /// Empties the queues and drops what the last rebuild brought.
    void forget();
    /// Places one newly stored message. A launch message clears the launch slot and waits in the store.
    void updateQueues(const SharedPayload& message);
    /// Drops the message from the one queue that its trigger names. A rebuild leaves it out until `removalEnded` tells
    /// that the store has dropped it, too.
    void remove(const VantixInAppMessagePayload& message);
    void removalEnded(const std::string& scope);
    /// Replaces the queues by what the store held, without what it was yet to drop. Nothing replaces nothing.
    void rebuild(Messages allMessages);

private:
    void addMilestoneMessage(const SharedPayload& message) { milestoneInAppMessages.append(message); }
    void updateOtherMessage(const SharedPayload& message) { otherInAppMessages.append(message); }
    void updateMilestoneMessages(const Messages& allMessages);
    void updateBroadcastMessages(Messages allMessages);
    void updateOtherInAppMessages(InAppMessageQueue allMessages) { otherInAppMessages = std::move(allMessages); }

    /// A scope that the store has been, or is about to be, asked to drop, and the number of that request. It drops the
    /// first record of the scope.
    using Removal = std::pair<std::string, std::uint64_t>;
    ImmutableSet<Removal> removalsUnderWay_;
    std::uint64_t nextRemoval_ = 0;
};

}  // namespace vantix
