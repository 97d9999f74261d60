#pragma once

#include "Platform/Ports/Application.h"
#include "Platform/Ports/DispatchWorkItem.h"
#include "Platform/Ports/NotificationCenter.h"
#include "VantixCore/VantixCore.h"
#include "VantixInAppMessage/Core/InAppMessagePresentationDelegate.h"
#include "VantixInAppMessage/Manager/InAppEventReporter.h"
#include "VantixInAppMessage/Manager/InAppImageFetcher.h"
#include "VantixInAppMessage/Manager/InAppMessageActions.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

class InAppMessageQueueManager;
class InAppMessageViewBuilder;

/// Decides whether and when a queued message is shown, shows it, keeps the pause between two messages, and turns what
/// the person does into actions and reports. Main thread, except where an operation says otherwise.
class InAppDisplayManager : public InAppMessageActions, public std::enable_shared_from_this<InAppDisplayManager> {
public:
    static std::shared_ptr<InAppDisplayManager> create(std::shared_ptr<VantixCore> vantixCore,
                                                       std::shared_ptr<InAppMessageQueueManager> queueManager,
                                                       std::optional<std::string> appId, Env environment,
                                                       ApplicationState applicationState);
    ~InAppDisplayManager() override;

    /// Whom to ask and to tell from now on; held weakly.
    void setPresentationDelegate(std::weak_ptr<InAppMessagePresentationDelegate> delegate);

    /// Cancels the timers, ends the observations, takes a shown message off the screen and lets go of the window
    /// builder.
    void tearDown();

    /// Fetches the message's image into the cache, if it has one. Synchronously the call blocks until the download has
    /// ended: never on the main thread. Asynchronously it returns at once, on any thread.
    virtual void downloadInAppMessageImageIfAvailable(const SharedPayload& message, bool asynchronousDownload);
    /// Tries to show the next message, for an event or, without one, the next that waits for none. Any thread.
    virtual void showInAppMessage(const std::optional<std::string>& scope, const std::optional<Dictionary>& attributes);
    void dismissInAppMessage(const SharedPayload& message, bool sendDismissedEvent = true) override;
    /// Dismisses the message on screen, with a report; does nothing when there is none.
    void dismissPresentedInAppMessage();
    void handleInAppMessageButtonAction(const SharedPayload& message, const std::optional<InAppCTA>& cta,
                                        std::optional<int> rating, const std::optional<std::string>& feedback,
                                        const std::optional<std::vector<int>>& feedbackOptions) override;
    /// Cancels the pause and forgets that a message is shown; the window stays.
    virtual void reset();
    virtual bool getShowingInAppMessageStatus() const;
    virtual void updateCurrentApplicationState(ApplicationState state);
    virtual ApplicationState getCurrentApplicationState() const;
    /// Seconds. Any thread.
    virtual double getMinimumDelayBetweenInAppMessages() const { return minimumDelayBetweenTwoInAppMessages_; }

private:
    InAppDisplayManager(std::shared_ptr<VantixCore> vantixCore, std::shared_ptr<InAppMessageQueueManager> queueManager,
                        std::optional<std::string> appId, Env environment, ApplicationState applicationState);

    /// What a message is tried for.
    struct Occasion {
        std::optional<std::string> scope;
        std::optional<Dictionary> attributes;

        bool operator==(const Occasion&) const = default;
    };

    /// Tries the messages that were put off, in their order, or else the next that waits for no event.
    void showNextInAppMessage();
    /// Does so silently, if nothing stands in the way: a launch message arrives from the store a moment after the
    /// application became active, and a scene may come to the front at any time.
    void showNextInAppMessageIfFree();
    /// Whether nothing but the application itself could stand in the way of a message now.
    bool isFree() const;
    bool mayPresent(const VantixInAppMessagePayload& message, Occasion occasion);
    void tellPresented(const SharedPayload& message);
    void tellDismissed();

    void addObserversForAppLifeCycle();
    void appStateChanged(const Notification& notification);
    void applicationLeavesForeground();
    void applicationBecomesActive();

    bool canShowInAppMessage(const VantixInAppMessagePayload& message, const std::optional<std::string>& scope);
    /// Why a message is refused during the pause.
    std::string pauseText() const;
    bool checkForHeaderFooterTypeInAppMessage(const VantixInAppMessagePayload& message,
                                              const std::optional<std::string>& scope);
    bool createInAppWindow(const SharedPayload& message);

    std::shared_ptr<DispatchWorkItem> generateWorkItem(std::function<void()> block) const;
    /// `after` is in seconds.
    std::shared_ptr<DispatchWorkItem> createWorkItemToExecuteOnMainQueue(std::function<void()> block,
                                                                         double after = 1.0);
    void createWorkItemToAddDelayInShowingNextAvailableInAppMessage();
    void createAutoDismissWorkItemForDismissingInAppMessage(const SharedPayload& message);
    void handleAutoDismissalOfInAppMessage(const SharedPayload& message);
    void resetShowInAppMessageWorkItem();
    void cancelShowInAppMessageWorkItem();
    /// Ends the pause and tries the next message; for timers, which hold the manager weakly.
    std::function<void()> blockToShowNextInAppMessage();

    void goToAppReviewAndRating(const SharedPayload& message);

    std::shared_ptr<InAppMessageQueueManager> queueManager_;
    bool autoDismissInApp_ = false;
    double autoDismissInAppDelay_ = 60.0;
    double minimumDelayBetweenTwoInAppMessages_ = 10.0;
    ApplicationState currentApplicationState_;
    std::shared_ptr<DispatchWorkItem> delayBetweenTwoInAppMessagesWorkItem_;
    std::shared_ptr<DispatchWorkItem> autoDismissInAppMessageWorkItem_;
    bool showingInAppMessage_ = false;
    std::weak_ptr<InAppMessagePresentationDelegate> presentationDelegate_;
    /// In the order in which they came, each once.
    std::vector<Occasion> postponed_;
    /// Told to the delegate and not yet told to be gone.
    SharedPayload presented_;
    std::shared_ptr<InAppMessageViewBuilder> inAppMessageViewBuilder_;
    std::shared_ptr<VantixCore> vantixCore_;
    InAppEventReporter eventReporter_;
    std::shared_ptr<InAppImageFetcher> imageFetcher_;
    Env environment_;
    std::optional<std::string> appStoreId_;
    std::vector<std::unique_ptr<NotificationCenter::Observation>> observations_;
};

}  // namespace vantix
