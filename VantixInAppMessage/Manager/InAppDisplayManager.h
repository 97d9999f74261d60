#pragma once

#include "Platform/Ports/Application.h"
#include "Platform/Ports/DispatchGroup.h"
#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Ports/NotificationCenter.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/VantixCore.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

class InAppMessageQueueManager;
class InAppMessageViewBuilder;

/// The types that may be shown. Badge messages are stored and never shown.
inline constexpr std::array supportedInAppMessageTypes = {
    VantixInAppNotificationType::popup,      VantixInAppNotificationType::footer, VantixInAppNotificationType::header,
    VantixInAppNotificationType::fullScreen, VantixInAppNotificationType::rating, VantixInAppNotificationType::feedback,
    VantixInAppNotificationType::appRating,
};

/// Decides whether and when a queued message is shown, shows it, keeps the pause between two messages, and turns what
/// the person does into actions and reports. Main thread, except where an operation says otherwise.
class InAppDisplayManager : public std::enable_shared_from_this<InAppDisplayManager> {
public:
    static std::shared_ptr<InAppDisplayManager> create(std::shared_ptr<VantixCore> vantixCore,
                                                       std::shared_ptr<InAppMessageQueueManager> queueManager,
                                                       std::optional<std::string> appId, Env environment,
                                                       ApplicationState applicationState);
    virtual ~InAppDisplayManager();

    /// Cancels the timers, ends the observations, takes a shown message off the screen and lets go of the window
    /// builder.
    void tearDown();

    /// Fetches the message's image into the cache, if it has one. Synchronously the call blocks until the download has
    /// ended: never on the main thread. Asynchronously it returns at once, on any thread.
    virtual void downloadInAppMessageImageIfAvailable(const VantixInAppMessagePayload& message,
                                                      bool asynchronousDownload);
    /// Tries to show the next message, for an event or, without one, the next that waits for none. Any thread.
    virtual void showInAppMessage(const std::optional<std::string>& scope, const std::optional<Dictionary>& attributes);
    /// Takes the message off the screen and starts the pause, after which the next one is tried.
    virtual void dismissInAppMessage(const VantixInAppMessagePayload& message, bool sendDismissedEvent = true);
    /// Carries out a button's call to action, reports it and dismisses the message; an unknown type is reported as a
    /// close and dismisses nothing.
    virtual void handleInAppMessageButtonAction(const VantixInAppMessagePayload& message,
                                                const std::optional<InAppCTA>& cta, std::optional<int> rating,
                                                const std::optional<std::string>& feedback,
                                                const std::optional<std::vector<int>>& feedbackOptions);
    /// Cancels the pause and forgets that a message is shown; the window stays.
    virtual void reset();
    virtual bool getShowingInAppMessageStatus() const { return showingInAppMessage_; }
    virtual void updateCurrentApplicationState(ApplicationState state) { currentApplicationState_ = state; }
    virtual ApplicationState getCurrentApplicationState() const { return currentApplicationState_; }
    /// Seconds.
    virtual double getMinimumDelayBetweenInAppMessages() const { return minimumDelayBetweenTwoInAppMessages_; }

    /// Called when a rebuild of the queues has ended: tries once more, silently, if nothing stands in the way, because
    /// a launch message arrives from the store a moment after the application became active.
    void showInAppMessageAfterRebuild();

private:
    InAppDisplayManager(std::shared_ptr<VantixCore> vantixCore, std::shared_ptr<InAppMessageQueueManager> queueManager,
                        std::optional<std::string> appId, Env environment, ApplicationState applicationState);

    void addObserversForAppLifeCycle();
    void appStateChanged(const Notification& notification);
    void applicationLeavesForeground();
    void applicationBecomesActive();

    bool canShowInAppMessage(const VantixInAppMessagePayload& message, const std::optional<std::string>& scope);
    bool checkForHeaderFooterTypeInAppMessage(const VantixInAppMessagePayload& message,
                                              const std::optional<std::string>& scope);
    bool createInAppWindow(const VantixInAppMessagePayload& message);

    std::shared_ptr<DispatchWorkItem> generateWorkItem(std::function<void()> block) const;
    std::shared_ptr<DispatchWorkItem> createWorkItemToExecuteOnMainQueue(double after, std::function<void()> block);
    void createWorkItemToAddDelayInShowingNextAvailableInAppMessage();
    void createAutoDismissWorkItemForDismissingInAppMessage(const VantixInAppMessagePayload& message);
    void handleAutoDismissalOfInAppMessage(const VantixInAppMessagePayload& message);
    void resetShowInAppMessageWorkItem();
    void cancelShowInAppMessageWorkItem();
    /// Ends the pause and tries the next message; for timers, which hold the manager weakly.
    std::function<void()> blockToShowNextInAppMessage();

    void downloadImageAsynchronously(const VantixInAppMessagePayload& message, const URL& imageURL,
                                     const std::shared_ptr<DispatchGroup>& dispatchGroup);
    void handleImageError(const VantixInAppMessagePayload& message, const ImageError& error);
    void goToAppReviewAndRating(const VantixInAppMessagePayload& message);

    void sendInAppMessageShownEvent(const VantixInAppMessagePayload& message);
    void sendInAppMessageDismissedEvent(const VantixInAppMessagePayload& message);
    void sendInAppMessageClickedEvent(const VantixInAppMessagePayload& message);
    void sendInAppRatingEvent(const VantixInAppMessagePayload& message, std::optional<int> rating);
    void sendInAppFeedbackevent(const VantixInAppMessagePayload& message, const std::optional<std::string>& feedback,
                                const std::optional<std::vector<int>>& feedbackOptions);
    void sendInAppMessageBehavirolEvent(VantixBehavioralEvents type, const VantixInAppMessagePayload& message);
    std::shared_ptr<DispatchWorkItem> workItemToSendDLREvent(VantixDLREvents type,
                                                             const VantixInAppMessagePayload& message) const;
    std::shared_ptr<DispatchWorkItem> workItemToSendBehavirolEvent(VantixBehavioralEvents type,
                                                                   Dictionary attributes) const;

    std::shared_ptr<InAppMessageQueueManager> queueManager_;
    bool autoDismissInApp_ = false;
    double autoDismissInAppDelay_ = 60.0;
    double minimumDelayBetweenTwoInAppMessages_ = 10.0;
    ApplicationState currentApplicationState_;
    std::shared_ptr<DispatchWorkItem> delayBetweenTwoInAppMessagesWorkItem_;
    std::shared_ptr<DispatchWorkItem> autoDismissInAppMessageWorkItem_;
    bool showingInAppMessage_ = false;
    std::shared_ptr<InAppMessageViewBuilder> inAppMessageViewBuilder_;
    std::shared_ptr<VantixCore> vantixCore_;
    std::shared_ptr<DispatchQueue> queue_;
    Env environment_;
    std::optional<std::string> appStoreId_;
    std::vector<std::unique_ptr<NotificationCenter::Observation>> observations_;
};

}  // namespace vantix
