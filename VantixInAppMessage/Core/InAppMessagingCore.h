#pragma once

#include "Platform/Ports/Application.h"
#include "Platform/Ports/NotificationCenter.h"
#include "Platform/Values/Export.h"
#include "VantixCore/VantixCore.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Core/VantixInAppMessageConfiguration.h"
#include "VantixPushNotification/NotificationCore.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

class InAppDisplayManager;
class InAppMessageIntake;
class InAppMessagePresentationDelegate;
class InAppMessageQueueManager;

/// The module. A host makes one, keeps it, and from then on the module works by itself, driven by pushes, captured
/// events and the application's life cycle. Nothing is read, fetched or drawn before one of them arrives.
class VANTIX_EXPORT InAppMessagingCore final : public VantixSilentPushNotificationProtocol,
                                               public VantixNotificationsReceiverProtocol,
                                               public std::enable_shared_from_this<InAppMessagingCore> {
public:
    using Completion = std::function<void(bool)>;

    InAppMessagingCore() = delete;

    /// Starts the module and registers it with the push library. Main thread, after Platform::install and
    /// Vantix::install. Throws what the core library throws; then nothing is left behind.
    static std::shared_ptr<InAppMessagingCore> create(std::shared_ptr<VantixInAppMessageConfigGenerator> configuration,
                                                      Env environment, ApplicationState applicationState);
    /// Tears the module down on the main thread, at once or on its next turn.
    ~InAppMessagingCore() override;

    /// Whom to ask before a message is shown, and to tell of it; held weakly, none at first. Main thread.
    void setPresentationDelegate(std::weak_ptr<InAppMessagePresentationDelegate> delegate);
    /// Ends timers and observations, takes a shown message off the screen and no further campaign in. Main thread;
    /// later calls do nothing.
    void tearDown();

    /// Takes a campaign that is already decoded. One without scope or trigger event name is dropped, and the completion
    /// is not called, nor is it once the module is gone; otherwise it learns whether the message was stored, on a
    /// thread of the module's, which it must not hold up. Any thread.
    void silentPushListener(const VantixInAppMessagePayload& notification, Completion completion = {});
    /// Removes every stored message and every cached image. A message on screen stays there. Any thread.
    void userLoggedOut();
    /// Takes the message off the screen and reports that it was dismissed. Any thread.
    void dismissInAppMessage(const VantixInAppMessagePayload& message);
    /// The same for whatever message is on the screen; without one nothing happens. Main thread.
    void dismissPresentedInAppMessage();
    /// Acts as a button without call to action does: reports a click and takes the message off the screen. Any thread.
    void handleInAppMessageButtonAction(const VantixInAppMessagePayload& message);
    /// The configuration's, read each time.
    std::optional<Image> getPlaceholderImage() const;

    const std::shared_ptr<InAppMessageQueueManager>& inAppMessageQueueManager() const { return queueManager_; }
    const std::shared_ptr<InAppDisplayManager>& inAppDisplayManager() const { return displayManager_; }

    /// For the push library.
    void handleSilentPushNotification(const Dictionary& notification) override;
    NotificationReceiverType getReceiverType() const override { return NotificationReceiverType::inAppMessages; }
    void notificationsReceived(const std::optional<std::vector<VantixNotificationPayload>>& notifications) override;

    /// What every reported event carries; the free function of that name. Pure; any thread.
    static Dictionary getAttributesForEventReporting(const VantixInAppMessagePayload& message, bool includeType = false,
                                                     std::optional<int> rating = {},
                                                     const std::optional<std::string>& feedback = {},
                                                     const std::optional<std::vector<int>>& feedbackOptions = {});

private:
    InAppMessagingCore(std::shared_ptr<VantixInAppMessageConfigGenerator> configuration, Env environment,
                       ApplicationState applicationState);
    void registerListeners();

    std::shared_ptr<VantixInAppMessageConfigGenerator> configuration_;
    std::shared_ptr<NotificationCore> notificationCore_;
    std::shared_ptr<VantixCore> sdkCore_;
    std::shared_ptr<InAppMessageQueueManager> queueManager_;
    std::shared_ptr<InAppDisplayManager> displayManager_;
    std::shared_ptr<InAppMessageIntake> intake_;
    std::unique_ptr<NotificationCenter::Observation> triggerObservation_;
};

}  // namespace vantix
