#pragma once

#include "Platform/Values/Value.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/AtomicSnapshot.h"
#include "VantixInAppMessage/Manager/InAppMessageQueues.h"
#include "VantixInAppMessage/Manager/InAppRepoHelper.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// The messages that wait to be shown, sorted by what triggers them and kept in step with the store. Any thread may
/// call any operation; completions run on the store thread, or where InAppRepoHelper says otherwise, and not at all
/// once the manager is gone.
class InAppMessageQueueManager : public std::enable_shared_from_this<InAppMessageQueueManager> {
public:
    using Completion = std::function<void(bool)>;
    InAppMessageQueueManager() = default;

    std::shared_ptr<const InAppMessageQueues> queues() const { return queues_.load(); }

    /// Called where completions run, each time a rebuild has ended. Set before use, at most once.
    void setOnRebuilt(std::function<void()> hook) { onRebuilt_ = std::move(hook); }

    /// Stores a message and puts it in its queue. A launch message replaces all stored ones and waits in the store for
    /// the next rebuild.
    void insert(const SharedPayload& message, Completion completion);
    /// Empties the queues and rebuilds them from the store; nothing more happens while the push library forbids the
    /// module. Rebuilds that are asked for while one is under way are done as one, after it.
    void updateInAppMessagesOnAppLaunch(Completion completion);

    /// The message to show: for an event when one is named, otherwise the first milestone message or else the launch
    /// message; null when there is none. Removes nothing.
    SharedPayload getInAppMessage(const std::optional<std::string>& eventName,
                                  const std::optional<Dictionary>& attributes) const;
    /// The first message of the other queue that waits for this event: same name, and every attribute that the message
    /// asks for is there and equal. Null when there is none.
    SharedPayload getOtherTypeInAppMessage(const std::string& eventName,
                                           const std::optional<Dictionary>& attributes) const;

    /// Removes the message that this event, without attributes, would show.
    void removeShownInAppMessage(const std::optional<std::string>& eventName);
    /// Drops the message from its one queue and from the store.
    void removeInAppMessage(const VantixInAppMessagePayload& message);
    /// Places a newly stored message.
    void updateQueues(const SharedPayload& message);

    /// Empties queues and store; what was on its way into the queues before is gone, too, once the store is empty.
    void removeAllMessages(Completion completion);
    void removeAllExistingBroadcastMessages(Completion completion);
    void removeMessage(const std::string& scope, Completion completion);
    void fetchAllInAppMessages(InAppRepoHelper::ListCompletion completion);

private:
    void insertInAppMessage(const SharedPayload& message, Completion completion);
    void getAllInAppMessages(Completion completion);
    void rebuildEnded();
    void rebuildQueues(const std::vector<InAppMessage>& records);
    /// Returns what was in the queues. Whoever empties them on the main thread sees to it that it goes elsewhere, since
    /// it takes long when many messages go.
    std::shared_ptr<const InAppMessageQueues> reset();
    /// The completion, if it is still called for by then.
    Completion unlessGone(Completion completion);

    struct Rebuilds {
        bool isUnderWay = false;
        bool isNextAskedFor = false;
        /// Of those that the next one answers.
        std::vector<Completion> completions = {};
    };

    AtomicSnapshot<InAppMessageQueues> queues_;
    AtomicSnapshot<Rebuilds> rebuilds_;
    std::shared_ptr<InAppRepoHelper> inAppRepoHelper_ = InAppRepoHelper::shared();
    std::function<void()> onRebuilt_;
};

}  // namespace vantix
