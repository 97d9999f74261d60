#include "VantixInAppMessage/Manager/InAppDisplayManager.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "VantixCore/VantixDomainFactory.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Core/InAppMessagingCore.h"
#include "VantixInAppMessage/MVVM/View/InAppMessageViewBuilder.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "Platform/Ports/MainThread.h"
#include "VantixPushNotification/NotificationCore.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace vantix {

namespace {

constexpr const char* file = "Manager/InAppDisplayManager";
constexpr const char* storePage = "https://apps.apple.com";

DispatchQueue& mainQueue() { return Platform::current()->dispatcher->mainQueue(); }

/// The shortest text of a number that keeps at least one decimal ("10.0").
std::string decimalText(double number) {
    std::array<char, 32> digits{};
    auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    std::string text(digits.data(), end);
    return text.find('.') == std::string::npos ? text + ".0" : text;
}

}  // namespace

std::shared_ptr<InAppDisplayManager> InAppDisplayManager::create(std::shared_ptr<VantixCore> vantixCore,
                                                                 std::shared_ptr<InAppMessageQueueManager> queueManager,
                                                                 std::optional<std::string> appId, Env environment,
                                                                 ApplicationState applicationState) {
    assertMainThread("InAppDisplayManager");
    std::shared_ptr<InAppDisplayManager> manager(new InAppDisplayManager(
        std::move(vantixCore), std::move(queueManager), std::move(appId), environment, applicationState));
    manager->inAppMessageViewBuilder_ = std::make_shared<InAppMessageViewBuilder>(manager);
    manager->addObserversForAppLifeCycle();
    manager->queueManager_->setOnRebuilt([weak = manager->weak_from_this()] {
        mainQueue().async([weak] {
            if (auto alive = weak.lock()) alive->showInAppMessageAfterRebuild();
        });
    });
    return manager;
}

InAppDisplayManager::InAppDisplayManager(std::shared_ptr<VantixCore> vantixCore,
                                         std::shared_ptr<InAppMessageQueueManager> queueManager,
                                         std::optional<std::string> appId, Env environment,
                                         ApplicationState applicationState)
    : queueManager_(std::move(queueManager)),
      currentApplicationState_(applicationState),
      vantixCore_(std::move(vantixCore)),
      queue_(Platform::current()->dispatcher->makeSerialQueue(VantixDomainFactory::getDomain("VantixInAppMessaging"),
                                                              QualityOfService::utility)),
      environment_(environment),
      appStoreId_(std::move(appId)) {}

InAppDisplayManager::~InAppDisplayManager() = default;

void InAppDisplayManager::tearDown() {
    assertMainThread("tearDown()");
    cancelShowInAppMessageWorkItem();
    if (autoDismissInAppMessageWorkItem_) autoDismissInAppMessageWorkItem_->cancel();
    autoDismissInAppMessageWorkItem_ = nullptr;
    observations_.clear();
    if (auto builder = std::move(inAppMessageViewBuilder_)) builder->tearDown();
    inAppMessageViewBuilder_ = nullptr;
}

// Showing

void InAppDisplayManager::showInAppMessage(const std::optional<std::string>& scope,
                                           const std::optional<Dictionary>& attributes) {
    if (!mainQueue().isCurrent()) {
        return mainQueue().async([weak = weak_from_this(), scope, attributes] {
            if (auto manager = weak.lock()) manager->showInAppMessage(scope, attributes);
        });
    }
    if (!NotificationCore::isAllowed()) return;
    auto message = queueManager_->getInAppMessage(scope, attributes);
    if (!message) return;
    if (!canShowInAppMessage(*message, scope)) return;
    if (!createInAppWindow(*message)) return;

    sendInAppMessageShownEvent(*message);
    showingInAppMessage_ = true;
    queueManager_->removeShownInAppMessage(scope);
    resetShowInAppMessageWorkItem();
    handleAutoDismissalOfInAppMessage(*message);
}

void InAppDisplayManager::showInAppMessageAfterRebuild() {
    bool nothingInTheWay = currentApplicationState_ == ApplicationState::active && !showingInAppMessage_ &&
                           !delayBetweenTwoInAppMessagesWorkItem_;
    if (nothingInTheWay) showInAppMessage({}, {});
}

bool InAppDisplayManager::canShowInAppMessage(const VantixInAppMessagePayload& message,
                                              const std::optional<std::string>& scope) {
    constexpr LegacyLogSource source{file, "canShowInAppMessage(message:of:)"};
    if (showingInAppMessage_) {
        VantixLogger::error(
            "Currently showing other in-app message. This in-app message will be shown after current one is dismissed",
            source);
        return false;
    }
    if (delayBetweenTwoInAppMessagesWorkItem_) {
        auto delay = decimalText(minimumDelayBetweenTwoInAppMessages_);
        VantixLogger::error("We previously displayed an in-app message within a " + delay +
                                "-second timeframe. We've now introduced a " + delay +
                                "-second delay between the last displayed in-app message and the current one. This "
                                "particular in-app message will only appear after all queued in-app messages have been "
                                "displayed and dismissed.",
                            source);
        return false;
    }
    if (currentApplicationState_ != ApplicationState::active) {
        VantixLogger::error(
            "Application is not in an active state. This in-app message will be shown after application comes to "
            "foreground state.",
            source);
        return false;
    }
    auto type = message.body.type;
    if (std::find(supportedInAppMessageTypes.begin(), supportedInAppMessageTypes.end(), type) ==
        supportedInAppMessageTypes.end()) {
        VantixLogger::error("This in-app message ignored as the type of the in-app message:" +
                                std::string(rawValue(type)) + " is not yet supported",
                            source);
        return false;
    }
    if (type == VantixInAppNotificationType::header || type == VantixInAppNotificationType::footer) {
        return checkForHeaderFooterTypeInAppMessage(message, scope);
    }
    return true;
}

bool InAppDisplayManager::checkForHeaderFooterTypeInAppMessage(const VantixInAppMessagePayload& message,
                                                               const std::optional<std::string>& scope) {
    if (!message.body.message.empty()) return true;
    VantixLogger::error("Header/Footer type in-app message has empty message with scope:" + message.scope +
                            ". Hence ignoring to show it",
                        {file, "checkForHeaderFooterTypeInAppMessage(message:of:)"});
    queueManager_->removeShownInAppMessage(scope);
    return false;
}

bool InAppDisplayManager::createInAppWindow(const VantixInAppMessagePayload& message) {
    if (!inAppMessageViewBuilder_) {
        VantixLogger::error("Unexpectedaly found nil object of type InAppMessageViewBuilder",
                            {file, "createInAppWindow(for:)"});
        return false;
    }
    if (environment_ != Env::dev) return true;
    if (inAppMessageViewBuilder_->createInAppWindow(message)) return true;
    if (currentApplicationState_ == ApplicationState::active) {
        delayBetweenTwoInAppMessagesWorkItem_ = createWorkItemToExecuteOnMainQueue(1.0, blockToShowNextInAppMessage());
    }
    return false;
}

// Dismissal and button actions

void InAppDisplayManager::dismissInAppMessage(const VantixInAppMessagePayload& message, bool sendDismissedEvent) {
    assertMainThread("dismissInAppMessage(message:sendDismissedEvent:)");
    if (sendDismissedEvent) sendInAppMessageDismissedEvent(message);
    showingInAppMessage_ = false;
    if (inAppMessageViewBuilder_) inAppMessageViewBuilder_->dismissInAppMessage();
    createWorkItemToAddDelayInShowingNextAvailableInAppMessage();
}

void InAppDisplayManager::handleInAppMessageButtonAction(const VantixInAppMessagePayload& message,
                                                         const std::optional<InAppCTA>& cta, std::optional<int> rating,
                                                         const std::optional<std::string>& feedback,
                                                         const std::optional<std::vector<int>>& feedbackOptions) {
    assertMainThread("handleInAppMessageButtonAction(with:cta:rating:feedback:feedbackOptions:)");
    auto isOf = [&](CTAActionType type) { return cta->type == rawValue(type); };
    if (!cta) {
        sendInAppMessageClickedEvent(message);
    } else if (isOf(CTAActionType::external) || isOf(CTAActionType::deepLink)) {
        vantixCore_->performCTAAction(cta->generateCTA(), message.getJSON());
        sendInAppMessageClickedEvent(message);
    } else if (isOf(CTAActionType::rating)) {
        sendInAppRatingEvent(message, rating);
    } else if (isOf(CTAActionType::feedback)) {
        sendInAppFeedbackevent(message, feedback, feedbackOptions);
    } else if (isOf(CTAActionType::appRating)) {
        goToAppReviewAndRating(message);
    } else {
        sendInAppMessageBehavirolEvent(VantixBehavioralEvents::inAppMessageClose, message);
        return;
    }
    dismissInAppMessage(message, false);
}

void InAppDisplayManager::goToAppReviewAndRating(const VantixInAppMessagePayload& message) {
    if (!appStoreId_) {
        VantixLogger::error("Failed to open review and rating page on App store as application Id is not provided.",
                            {file, "goToAppReviewAndRating(with:)"});
        return;
    }
    vantixCore_->openExternal(storePage + std::string("/app/id") + *appStoreId_ + "?action=write-review");
    sendInAppMessageBehavirolEvent(VantixBehavioralEvents::inAppMessageAppRating, message);
}

void InAppDisplayManager::reset() {
    assertMainThread("reset()");
    cancelShowInAppMessageWorkItem();
    showingInAppMessage_ = false;
}

// Timers

std::shared_ptr<DispatchWorkItem> InAppDisplayManager::generateWorkItem(std::function<void()> block) const {
    return std::make_shared<DispatchWorkItem>(QualityOfService::utility, WorkItemFlags::enforceQoS, std::move(block));
}

std::shared_ptr<DispatchWorkItem> InAppDisplayManager::createWorkItemToExecuteOnMainQueue(double after,
                                                                                          std::function<void()> block) {
    auto item = generateWorkItem(std::move(block));
    mainQueue().asyncAfter(seconds(after), item);
    return item;
}

std::function<void()> InAppDisplayManager::blockToShowNextInAppMessage() {
    return [weak = weak_from_this()] {
        auto manager = weak.lock();
        if (!manager) return;
        manager->delayBetweenTwoInAppMessagesWorkItem_ = nullptr;
        manager->showInAppMessage({}, {});
    };
}

void InAppDisplayManager::createWorkItemToAddDelayInShowingNextAvailableInAppMessage() {
    auto delay = minimumDelayBetweenTwoInAppMessages_;
    if (delayBetweenTwoInAppMessagesWorkItem_) {
        mainQueue().asyncAfter(seconds(delay), delayBetweenTwoInAppMessagesWorkItem_);
    } else {
        delayBetweenTwoInAppMessagesWorkItem_ =
            createWorkItemToExecuteOnMainQueue(delay, blockToShowNextInAppMessage());
    }
}

void InAppDisplayManager::handleAutoDismissalOfInAppMessage(const VantixInAppMessagePayload& message) {
    if (autoDismissInApp_) createAutoDismissWorkItemForDismissingInAppMessage(message);
}

void InAppDisplayManager::createAutoDismissWorkItemForDismissingInAppMessage(const VantixInAppMessagePayload& message) {
    if (autoDismissInAppMessageWorkItem_) {
        mainQueue().asyncAfter(seconds(autoDismissInAppDelay_), autoDismissInAppMessageWorkItem_);
        return;
    }
    autoDismissInAppMessageWorkItem_ =
        createWorkItemToExecuteOnMainQueue(autoDismissInAppDelay_, [weak = weak_from_this(), message] {
            auto manager = weak.lock();
            if (!manager) return;
            manager->autoDismissInAppMessageWorkItem_ = nullptr;
            manager->dismissInAppMessage(message, true);
        });
}

void InAppDisplayManager::resetShowInAppMessageWorkItem() { delayBetweenTwoInAppMessagesWorkItem_ = nullptr; }

void InAppDisplayManager::cancelShowInAppMessageWorkItem() {
    if (!delayBetweenTwoInAppMessagesWorkItem_) return;
    delayBetweenTwoInAppMessagesWorkItem_->cancel();
    delayBetweenTwoInAppMessagesWorkItem_ = nullptr;
}

// Life cycle

void InAppDisplayManager::addObserversForAppLifeCycle() {
    VantixLogger::debug("In addObserversForAppLifeCycle of InAppDisplayManager",
                        {file, "addObserversForAppLifeCycle()"});
    using namespace ApplicationNotification;
    for (const char* name : {didBecomeActive, didEnterBackground, willTerminate, willResignActive}) {
        observations_.push_back(Platform::current()->notificationCenter->addObserver(
            name, [weak = weak_from_this()](const Notification& notification) {
                if (auto manager = weak.lock()) manager->appStateChanged(notification);
            }));
    }
}

void InAppDisplayManager::appStateChanged(const Notification& notification) {
    assertMainThread("appStateChanged(_:)");
    VantixLogger::debug("In appStateChanged of InAppDisplayManager with notification " + notification.name,
                        {file, "appStateChanged(_:)"});
    if (notification.name == ApplicationNotification::didBecomeActive) {
        applicationBecomesActive();
    } else {
        applicationLeavesForeground();
    }
}

void InAppDisplayManager::applicationLeavesForeground() {
    if (delayBetweenTwoInAppMessagesWorkItem_) {
        cancelShowInAppMessageWorkItem();
        VantixLogger::debug(
            " : -> Suspending work item initiated for showing next in-app message: App goes to background",
            {file, "appStateChanged(_:)"});
    }
    currentApplicationState_ = ApplicationState::background;
}

void InAppDisplayManager::applicationBecomesActive() {
    VantixLogger::debug(" : -> App becomes active", {file, "appStateChanged(_:)"});
    if (currentApplicationState_ != ApplicationState::active) queueManager_->updateInAppMessagesOnAppLaunch({});
    currentApplicationState_ = ApplicationState::active;
    showInAppMessage({}, {});
}

// Images

void InAppDisplayManager::downloadInAppMessageImageIfAvailable(const VantixInAppMessagePayload& message,
                                                               bool asynchronousDownload) {
    auto url = message.getImageURL();
    if (!url) return;
    if (asynchronousDownload) return downloadImageAsynchronously(message, *url, nullptr);

    auto group = Platform::current()->dispatcher->makeGroup();
    group->enter();
    downloadImageAsynchronously(message, *url, group);
    group->wait();
}

void InAppDisplayManager::downloadImageAsynchronously(const VantixInAppMessagePayload& message, const URL& imageURL,
                                                      const std::shared_ptr<DispatchGroup>& dispatchGroup) {
    ImageUtility::downloadImage(imageURL, message.imageIdentifier,
                                [weak = weak_from_this(), message, dispatchGroup](const auto& result) {
                                    auto manager = weak.lock();
                                    if (manager && !result) manager->handleImageError(message, result.error());
                                    if (dispatchGroup) dispatchGroup->leave();
                                });
}

void InAppDisplayManager::handleImageError(const VantixInAppMessagePayload& message, const ImageError& error) {
    constexpr LegacyLogSource source{file, "downloadImageAsynchronously(for:imageURL:dispatchGroup:)"};
    if (!error.isImageDownloadError()) {
        VantixLogger::error("Failed to download in-app message image due to error:" + error.localizedDescription,
                            source);
        return;
    }
    bool imageIsLost =
        error.kind == ImageError::Kind::invalidImageData || error.kind == ImageError::Kind::imageDownloadingFailed;
    if (!imageIsLost || !message.canDeleteInAppMessageWhenImageDownloadingFailed()) return;
    VantixLogger::error("Removed the in-app message " + message.description() + " of type " +
                            std::string(rawValue(message.body.type)) + " as downloading failed for image with url " +
                            message.body.image,
                        source);
    queueManager_->removeInAppMessage(message);
}

// Events

void InAppDisplayManager::sendInAppMessageShownEvent(const VantixInAppMessagePayload& message) {
    queue_->async(workItemToSendDLREvent(VantixDLREvents::inAppMessageShown, message));
}

void InAppDisplayManager::sendInAppMessageDismissedEvent(const VantixInAppMessagePayload& message) {
    queue_->async(workItemToSendDLREvent(VantixDLREvents::inAppMessageDismissed, message));
}

void InAppDisplayManager::sendInAppMessageClickedEvent(const VantixInAppMessagePayload& message) {
    queue_->async(workItemToSendDLREvent(VantixDLREvents::inAppMessageClicked, message));
}

void InAppDisplayManager::sendInAppRatingEvent(const VantixInAppMessagePayload& message, std::optional<int> rating) {
    queue_->async(
        workItemToSendBehavirolEvent(VantixBehavioralEvents::inAppMessageRating,
                                     InAppMessagingCore::getAttributesForEventReporting(message, false, rating)));
}

void InAppDisplayManager::sendInAppFeedbackevent(const VantixInAppMessagePayload& message,
                                                 const std::optional<std::string>& feedback,
                                                 const std::optional<std::vector<int>>& feedbackOptions) {
    queue_->async(workItemToSendBehavirolEvent(
        VantixBehavioralEvents::inAppMessageFeedback,
        InAppMessagingCore::getAttributesForEventReporting(message, false, {}, feedback, feedbackOptions)));
}

void InAppDisplayManager::sendInAppMessageBehavirolEvent(VantixBehavioralEvents type,
                                                         const VantixInAppMessagePayload& message) {
    queue_->async(workItemToSendBehavirolEvent(type, InAppMessagingCore::getAttributesForEventReporting(message)));
}

std::shared_ptr<DispatchWorkItem> InAppDisplayManager::workItemToSendDLREvent(
    VantixDLREvents type, const VantixInAppMessagePayload& message) const {
    // Holds the core library, not the manager: a report is sent even if the manager is gone by then.
    return std::make_shared<DispatchWorkItem>(
        QualityOfService::utility, WorkItemFlags::inheritQoS, [core = vantixCore_, type, message] {
            core->reportDLREvent(type, InAppMessagingCore::getAttributesForEventReporting(message));
        });
}

std::shared_ptr<DispatchWorkItem> InAppDisplayManager::workItemToSendBehavirolEvent(VantixBehavioralEvents type,
                                                                                    Dictionary attributes) const {
    return std::make_shared<DispatchWorkItem>(QualityOfService::utility, WorkItemFlags::inheritQoS,
                                              [core = vantixCore_, type, attributes = std::move(attributes)] {
                                                  core->reportBehavioralEvent(rawValue(type), attributes);
                                              });
}

}  // namespace vantix
