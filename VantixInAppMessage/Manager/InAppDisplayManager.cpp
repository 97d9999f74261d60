#include "VantixInAppMessage/Manager/InAppDisplayManager.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/MainThread.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"
#include "VantixInAppMessage/MVVM/View/InAppMessageViewBuilder.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "VantixPushNotification/NotificationCore.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Manager/InAppDisplayManager"};
constexpr const char* storePage = "https://apps.apple.com";

DispatchQueue& mainQueue() { return Platform::current()->dispatcher->mainQueue(); }

/// The shortest text of a number that keeps at least one decimal ("10.0").
std::string decimalText(double number) {
    std::array<char, 32> digits{};
    auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    std::string text(digits.data(), end);
    return text.find('.') == std::string::npos ? text + ".0" : text;
}

PresentedMessage summary(const VantixInAppMessagePayload& message) {
    return {message.scope, message.campaignId, message.body.type};
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
    auto showNext = whileAlive(manager->weak_from_this(), [](auto& alive) { alive.showNextInAppMessageIfFree(); });
    manager->queueManager_->setOnRebuilt([showNext] { mainQueue().async(showNext); });
    return manager;
}

InAppDisplayManager::InAppDisplayManager(std::shared_ptr<VantixCore> vantixCore,
                                         std::shared_ptr<InAppMessageQueueManager> queueManager,
                                         std::optional<std::string> appId, Env environment,
                                         ApplicationState applicationState)
    : queueManager_(std::move(queueManager)),
      currentApplicationState_(applicationState),
      vantixCore_(std::move(vantixCore)),
      eventReporter_(vantixCore_),
      imageFetcher_(std::make_shared<InAppImageFetcher>(queueManager_)),
      environment_(environment),
      appStoreId_(std::move(appId)) {}

InAppDisplayManager::~InAppDisplayManager() = default;

void InAppDisplayManager::setPresentationDelegate(std::weak_ptr<InAppMessagePresentationDelegate> delegate) {
    assertMainThread("setPresentationDelegate(_:)");
    presentationDelegate_ = std::move(delegate);
}

void InAppDisplayManager::tearDown() {
    assertMainThread("tearDown()");
    cancelShowInAppMessageWorkItem();
    if (autoDismissInAppMessageWorkItem_) autoDismissInAppMessageWorkItem_->cancel();
    autoDismissInAppMessageWorkItem_ = nullptr;
    observations_.clear();
    if (auto builder = std::move(inAppMessageViewBuilder_)) builder->tearDown();
    inAppMessageViewBuilder_ = nullptr;
    tellDismissed();
}

// Showing

void InAppDisplayManager::showInAppMessage(const std::optional<std::string>& scope,
                                           const std::optional<Dictionary>& attributes) {
    if (!mainQueue().isCurrent()) {
        return mainQueue().async(whileAlive(
            weak_from_this(), [scope, attributes](auto& manager) { manager.showInAppMessage(scope, attributes); }));
    }
    if (!NotificationCore::isAllowed()) return;
    auto message = queueManager_->getInAppMessage(scope, attributes);
    if (!message) return;
    if (!canShowInAppMessage(*message, scope)) return;
    if (!mayPresent(*message, {scope, attributes})) return;
    if (!createInAppWindow(message)) return;

    eventReporter_.sendInAppMessageShownEvent(message);
    showingInAppMessage_ = true;
    queueManager_->removeShownInAppMessage(scope);
    resetShowInAppMessageWorkItem();
    handleAutoDismissalOfInAppMessage(message);
    tellPresented(message);
}

void InAppDisplayManager::showNextInAppMessage() {
    assertMainThread("showNextInAppMessage()");
    if (!isFree()) return showInAppMessage({}, {});
    for (Occasion& occasion : std::exchange(postponed_, {})) {
        if (showingInAppMessage_) {
            postponed_.push_back(std::move(occasion));
        } else {
            showInAppMessage(occasion.scope, occasion.attributes);
        }
    }
    if (!showingInAppMessage_ && postponed_.empty()) showInAppMessage({}, {});
}

void InAppDisplayManager::showNextInAppMessageIfFree() {
    assertMainThread("showNextInAppMessageIfFree()");
    if (isFree()) showNextInAppMessage();
}

bool InAppDisplayManager::isFree() const {
    return currentApplicationState_ == ApplicationState::active && !showingInAppMessage_ &&
           !delayBetweenTwoInAppMessagesWorkItem_ && NotificationCore::isAllowed();
}

bool InAppDisplayManager::mayPresent(const VantixInAppMessagePayload& message, Occasion occasion) {
    auto delegate = presentationDelegate_.lock();
    if (!delegate || delegate->shouldPresent(summary(message))) return true;
    log.info("mayPresent(message:)",
             [&] { return "The application puts off the message with scope:" + message.scope; });
    bool waits = std::find(postponed_.begin(), postponed_.end(), occasion) != postponed_.end();
    if (!waits) postponed_.push_back(std::move(occasion));
    return false;
}

void InAppDisplayManager::tellPresented(const SharedPayload& message) {
    tellDismissed();
    presented_ = message;
    if (auto delegate = presentationDelegate_.lock()) delegate->didPresent(summary(*presented_));
}

void InAppDisplayManager::tellDismissed() {
    auto presented = std::exchange(presented_, {});
    if (!presented) return;
    if (auto delegate = presentationDelegate_.lock()) delegate->didDismiss(summary(*presented));
}

bool InAppDisplayManager::canShowInAppMessage(const VantixInAppMessagePayload& message,
                                              const std::optional<std::string>& scope) {
    auto refuse = [](const auto& text) {
        log.error("canShowInAppMessage(message:of:)", text);
        return false;
    };
    if (showingInAppMessage_) {
        return refuse(
            "Currently showing other in-app message. This in-app message will be shown after current one is dismissed");
    }
    if (delayBetweenTwoInAppMessagesWorkItem_) return refuse([this] { return pauseText(); });
    if (currentApplicationState_ != ApplicationState::active) {
        return refuse(
            "Application is not in an active state. This in-app message will be shown after application comes to "
            "foreground state.");
    }
    if (applies(InAppMessageObjection::unsupportedType, message)) {
        return refuse([&] {
            return "This in-app message ignored as the type of the in-app message:" +
                   std::string(rawValue(message.body.type)) + " is not yet supported";
        });
    }
    return checkForHeaderFooterTypeInAppMessage(message, scope);
}

std::string InAppDisplayManager::pauseText() const {
    auto delay = decimalText(minimumDelayBetweenTwoInAppMessages_);
    return "We previously displayed an in-app message within a " + delay +
           "-second timeframe. We've now introduced a " + delay +
           "-second delay between the last displayed in-app message and the current one. This particular in-app "
           "message will only appear after all queued in-app messages have been displayed and dismissed.";
}

bool InAppDisplayManager::checkForHeaderFooterTypeInAppMessage(const VantixInAppMessagePayload& message,
                                                               const std::optional<std::string>& scope) {
    if (!applies(InAppMessageObjection::bannerWithoutText, message)) return true;
    log.error("checkForHeaderFooterTypeInAppMessage(message:of:)", [&] {
        return "Header/Footer type in-app message has empty message with scope:" + message.scope +
               ". Hence ignoring to show it";
    });
    queueManager_->removeShownInAppMessage(scope);
    return false;
}

bool InAppDisplayManager::createInAppWindow(const SharedPayload& message) {
    if (!inAppMessageViewBuilder_) {
        log.error("createInAppWindow(for:)", "Unexpectedaly found nil object of type InAppMessageViewBuilder");
        return false;
    }
    if (environment_ != Env::dev) return true;
    if (inAppMessageViewBuilder_->createInAppWindow(message)) return true;
    if (currentApplicationState_ == ApplicationState::active) {
        delayBetweenTwoInAppMessagesWorkItem_ = createWorkItemToExecuteOnMainQueue(blockToShowNextInAppMessage());
    }
    return false;
}

// Dismissal and button actions

void InAppDisplayManager::dismissInAppMessage(const SharedPayload& message, bool sendDismissedEvent) {
    assertMainThread("dismissInAppMessage(message:sendDismissedEvent:)");
    if (sendDismissedEvent) eventReporter_.sendInAppMessageDismissedEvent(message);
    showingInAppMessage_ = false;
    if (inAppMessageViewBuilder_) inAppMessageViewBuilder_->dismissInAppMessage();
    tellDismissed();
    createWorkItemToAddDelayInShowingNextAvailableInAppMessage();
}

void InAppDisplayManager::dismissPresentedInAppMessage() {
    assertMainThread("dismissPresentedInAppMessage()");
    if (auto message = presented_) dismissInAppMessage(message, true);
}

void InAppDisplayManager::handleInAppMessageButtonAction(const SharedPayload& message,
                                                         const std::optional<InAppCTA>& cta, std::optional<int> rating,
                                                         const std::optional<std::string>& feedback,
                                                         const std::optional<std::vector<int>>& feedbackOptions) {
    assertMainThread("handleInAppMessageButtonAction(with:cta:rating:feedback:feedbackOptions:)");
    auto isOf = [&](CTAActionType type) { return cta->type == rawValue(type); };
    if (!cta) {
        eventReporter_.sendInAppMessageClickedEvent(message);
    } else if (isOf(CTAActionType::external) || isOf(CTAActionType::deepLink)) {
        vantixCore_->performCTAAction(cta->generateCTA(), message->getJSON());
        eventReporter_.sendInAppMessageClickedEvent(message);
    } else if (isOf(CTAActionType::rating)) {
        eventReporter_.sendInAppRatingEvent(message, rating);
    } else if (isOf(CTAActionType::feedback)) {
        eventReporter_.sendInAppFeedbackevent(message, feedback, feedbackOptions);
    } else if (isOf(CTAActionType::appRating)) {
        goToAppReviewAndRating(message);
    } else {
        eventReporter_.sendInAppMessageBehavirolEvent(VantixBehavioralEvents::inAppMessageClose, message);
        return;
    }
    dismissInAppMessage(message, false);
}

void InAppDisplayManager::goToAppReviewAndRating(const SharedPayload& message) {
    if (!appStoreId_) {
        log.error("goToAppReviewAndRating(with:)",
                  "Failed to open review and rating page on App store as application Id is not provided.");
        return;
    }
    vantixCore_->openExternal(storePage + std::string("/app/id") + *appStoreId_ + "?action=write-review");
    eventReporter_.sendInAppMessageBehavirolEvent(VantixBehavioralEvents::inAppMessageAppRating, message);
}

void InAppDisplayManager::reset() {
    assertMainThread("reset()");
    cancelShowInAppMessageWorkItem();
    showingInAppMessage_ = false;
}

bool InAppDisplayManager::getShowingInAppMessageStatus() const {
    assertMainThread("getShowingInAppMessageStatus()");
    return showingInAppMessage_;
}

void InAppDisplayManager::updateCurrentApplicationState(ApplicationState state) {
    assertMainThread("updateCurrentApplicationState(state:)");
    currentApplicationState_ = state;
}

ApplicationState InAppDisplayManager::getCurrentApplicationState() const {
    assertMainThread("getCurrentApplicationState()");
    return currentApplicationState_;
}

void InAppDisplayManager::downloadInAppMessageImageIfAvailable(const SharedPayload& message,
                                                               bool asynchronousDownload) {
    imageFetcher_->downloadInAppMessageImageIfAvailable(message, asynchronousDownload);
}

// Timers

std::shared_ptr<DispatchWorkItem> InAppDisplayManager::generateWorkItem(std::function<void()> block) const {
    return std::make_shared<DispatchWorkItem>(QualityOfService::utility, WorkItemFlags::enforceQoS, std::move(block));
}

std::shared_ptr<DispatchWorkItem> InAppDisplayManager::createWorkItemToExecuteOnMainQueue(std::function<void()> block,
                                                                                          double after) {
    auto item = generateWorkItem(std::move(block));
    mainQueue().asyncAfter(seconds(after), item);
    return item;
}

std::function<void()> InAppDisplayManager::blockToShowNextInAppMessage() {
    return whileAlive(weak_from_this(), [](InAppDisplayManager& manager) {
        manager.delayBetweenTwoInAppMessagesWorkItem_ = nullptr;
        manager.showNextInAppMessage();
    });
}

void InAppDisplayManager::createWorkItemToAddDelayInShowingNextAvailableInAppMessage() {
    auto delay = minimumDelayBetweenTwoInAppMessages_;
    if (delayBetweenTwoInAppMessagesWorkItem_) {
        mainQueue().asyncAfter(seconds(delay), delayBetweenTwoInAppMessagesWorkItem_);
    } else {
        delayBetweenTwoInAppMessagesWorkItem_ =
            createWorkItemToExecuteOnMainQueue(blockToShowNextInAppMessage(), delay);
    }
}

void InAppDisplayManager::handleAutoDismissalOfInAppMessage(const SharedPayload& message) {
    if (autoDismissInApp_) createAutoDismissWorkItemForDismissingInAppMessage(message);
}

void InAppDisplayManager::createAutoDismissWorkItemForDismissingInAppMessage(const SharedPayload& message) {
    if (autoDismissInAppMessageWorkItem_) {
        mainQueue().asyncAfter(seconds(autoDismissInAppDelay_), autoDismissInAppMessageWorkItem_);
        return;
    }
    autoDismissInAppMessageWorkItem_ =
        createWorkItemToExecuteOnMainQueue(whileAlive(weak_from_this(),
                                                      [message](InAppDisplayManager& manager) {
                                                          manager.autoDismissInAppMessageWorkItem_ = nullptr;
                                                          manager.dismissInAppMessage(message, true);
                                                      }),
                                           autoDismissInAppDelay_);
}

void InAppDisplayManager::resetShowInAppMessageWorkItem() { delayBetweenTwoInAppMessagesWorkItem_ = nullptr; }

void InAppDisplayManager::cancelShowInAppMessageWorkItem() {
    if (!delayBetweenTwoInAppMessagesWorkItem_) return;
    delayBetweenTwoInAppMessagesWorkItem_->cancel();
    delayBetweenTwoInAppMessagesWorkItem_ = nullptr;
}

// Life cycle

void InAppDisplayManager::addObserversForAppLifeCycle() {
    log.debug("addObserversForAppLifeCycle()", "In addObserversForAppLifeCycle of InAppDisplayManager");
    using namespace ApplicationNotification;
    for (const char* name : {didBecomeActive, didEnterBackground, willTerminate, willResignActive}) {
        observations_.push_back(Platform::current()->notificationCenter->addObserver(
            name, whileAlive(weak_from_this(), [](InAppDisplayManager& manager, const Notification& notification) {
                manager.appStateChanged(notification);
            })));
    }
    observations_.push_back(Platform::current()->notificationCenter->addObserver(
        sceneDidActivate, whileAlive(weak_from_this(), [](InAppDisplayManager& manager, const Notification&) {
            manager.showNextInAppMessageIfFree();
        })));
}

void InAppDisplayManager::appStateChanged(const Notification& notification) {
    assertMainThread("appStateChanged(_:)");
    log.debug("appStateChanged(_:)",
              [&] { return "In appStateChanged of InAppDisplayManager with notification " + notification.name; });
    if (notification.name == ApplicationNotification::didBecomeActive) {
        applicationBecomesActive();
    } else {
        applicationLeavesForeground();
    }
}

void InAppDisplayManager::applicationLeavesForeground() {
    if (delayBetweenTwoInAppMessagesWorkItem_) {
        cancelShowInAppMessageWorkItem();
        log.debug("appStateChanged(_:)",
                  " : -> Suspending work item initiated for showing next in-app message: App goes to background");
    }
    currentApplicationState_ = ApplicationState::background;
}

void InAppDisplayManager::applicationBecomesActive() {
    log.debug("appStateChanged(_:)", " : -> App becomes active");
    if (currentApplicationState_ != ApplicationState::active) queueManager_->updateInAppMessagesOnAppLaunch({});
    currentApplicationState_ = ApplicationState::active;
    showNextInAppMessage();
}

}  // namespace vantix
