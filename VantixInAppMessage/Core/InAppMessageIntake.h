#pragma once

#include "Platform/Ports/DispatchWorkItem.h"
#include "Platform/Ports/NotificationCenter.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixPushNotification/NotificationCore.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vantix {

class InAppDisplayManager;
class InAppImageFetcher;
class InAppMessageQueueManager;

/// How campaigns enter the module, and how captured events make stored ones appear. Usable from any thread. Once it is
/// gone nothing is shown any more of what was under way.
class InAppMessageIntake : public std::enable_shared_from_this<InAppMessageIntake> {
public:
    using Completion = std::function<void(bool)>;

    InAppMessageIntake(std::shared_ptr<InAppMessageQueueManager> queueManager,
                       std::shared_ptr<InAppDisplayManager> displayManager,
                       std::shared_ptr<InAppImageFetcher> imageFetcher);

    /// Takes a push, stores its message and shows it.
    void handleSilentPushNotification(const Dictionary& notification);
    /// The same for a push that is decoded already. The completion learns whether the message was stored; it is not
    /// called when the message is refused, nor once this object is gone.
    void silentPushListener(const SharedPayload& notification, Completion completion);
    /// Stores the messages among delivered notifications and shows none.
    void notificationsReceived(const std::optional<std::vector<VantixNotificationPayload>>& notifications);
    /// Shows the message that waits for the event, if there is one.
    void inAppTriggerCaptured(const Notification& notification);
    /// Removes every stored message and every cached image.
    void removeAllInAppMessages();

    /// From now on no campaign and no event is taken.
    void close() { isClosed_ = true; }

private:
    void inAppMessaseReceived(const SharedPayload& message, bool showInAppImmediately = true,
                              Completion completion = {});
    /// Fetches the image, or fails to, then shows the next message, if asked for, and calls the completion.
    void prepare(const SharedPayload& message, bool showInAppImmediately, std::function<void()> completion);
    /// A block as background work of the module; no path of the intake schedules one.
    std::shared_ptr<DispatchWorkItem> generateWorkItem(std::function<void()> block) const;

    std::shared_ptr<InAppMessageQueueManager> queueManager_;
    std::shared_ptr<InAppDisplayManager> displayManager_;
    std::shared_ptr<InAppImageFetcher> imageFetcher_;
    /// Set on the main thread, read on any.
    std::atomic<bool> isClosed_ = false;
};

}  // namespace vantix
