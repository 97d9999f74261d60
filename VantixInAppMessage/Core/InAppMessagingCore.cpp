#include "VantixInAppMessage/Core/InAppMessagingCore.h"

#include "Platform/Ports/MainThread.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/FatalError.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/VantixConstants.h"
#include "VantixCore/VantixImageView.h"
#include "VantixInAppMessage/Core/InAppEventAttributes.h"
#include "VantixInAppMessage/Core/InAppMessageIntake.h"
#include "VantixInAppMessage/Manager/InAppDisplayManager.h"
#include "VantixInAppMessage/Manager/InAppImageFetcher.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "VantixInAppMessage/Resources/ImageResource.h"

#include <utility>

namespace vantix {

std::shared_ptr<InAppMessagingCore> InAppMessagingCore::create(
    std::shared_ptr<VantixInAppMessageConfigGenerator> configuration, Env environment,
    ApplicationState applicationState) {
    assertMainThread("InAppMessagingCore");
    std::shared_ptr<InAppMessagingCore> core(
        new InAppMessagingCore(std::move(configuration), environment, applicationState));
    core->registerListeners();
    return core;
}

InAppMessagingCore::InAppMessagingCore(std::shared_ptr<VantixInAppMessageConfigGenerator> configuration,
                                       Env environment, ApplicationState applicationState)
    : configuration_(std::move(configuration)) {
    // The core library always runs for `unittest`; the caller's environment is the display manager's.
    sdkCore_ = VantixCore::generate(configuration_->vantixConfig(), {}, false, {}, {}, Env::unittest);
    notificationCore_ = configuration_->notificationCore();
    queueManager_ = std::make_shared<InAppMessageQueueManager>();
    if (!sdkCore_) fatalError("Unexpectedly found nil while implicitly unwrapping an Optional value");
    displayManager_ = InAppDisplayManager::create(sdkCore_, queueManager_, configuration_->appStoreId(), environment,
                                                  applicationState);
    intake_ = std::make_shared<InAppMessageIntake>(queueManager_, displayManager_,
                                                   std::make_shared<InAppImageFetcher>(queueManager_));
}

void InAppMessagingCore::registerListeners() {
    auto configured = whileAlive(
        weak_from_this(), [](InAppMessagingCore& core) { return core.getPlaceholderImage(); },
        [] { return std::optional<Image>(); });
    VantixImageView::setDefaultPlaceholder([configured] {
        auto image = configured();
        return image ? *image : ImageResource::defaultImage().image();
    });
    triggerObservation_ = Platform::current()->notificationCenter->addObserver(
        VantixNotification::didCaptureInAppTrigger,
        whileAlive(std::weak_ptr(intake_), [](InAppMessageIntake& intake, const Notification& notification) {
            intake.inAppTriggerCaptured(notification);
        }));
    if (!notificationCore_) return;
    notificationCore_->registerSilentPushListener(std::string(rawValue(VantixNotificationType::inapp)),
                                                  shared_from_this());
    notificationCore_->addNotificationReceiver(shared_from_this());
}

InAppMessagingCore::~InAppMessagingCore() {
    runOnMainThread([displayManager = displayManager_] { displayManager->tearDown(); });
}

void InAppMessagingCore::setPresentationDelegate(std::weak_ptr<InAppMessagePresentationDelegate> delegate) {
    displayManager_->setPresentationDelegate(std::move(delegate));
}

void InAppMessagingCore::tearDown() {
    assertMainThread("tearDown()");
    intake_->close();
    triggerObservation_ = nullptr;
    displayManager_->tearDown();
}

void InAppMessagingCore::handleSilentPushNotification(const Dictionary& notification) {
    intake_->handleSilentPushNotification(notification);
}

void InAppMessagingCore::notificationsReceived(
    const std::optional<std::vector<VantixNotificationPayload>>& notifications) {
    intake_->notificationsReceived(notifications);
}

void InAppMessagingCore::silentPushListener(const VantixInAppMessagePayload& notification, Completion completion) {
    intake_->silentPushListener(std::make_shared<const VantixInAppMessagePayload>(notification), std::move(completion));
}

void InAppMessagingCore::userLoggedOut() { intake_->removeAllInAppMessages(); }

void InAppMessagingCore::dismissInAppMessage(const VantixInAppMessagePayload& message) {
    runOnMainThread([displayManager = displayManager_, shared = std::make_shared<const VantixInAppMessagePayload>(
                                                           message)] { displayManager->dismissInAppMessage(shared); });
}

void InAppMessagingCore::dismissPresentedInAppMessage() { displayManager_->dismissPresentedInAppMessage(); }

void InAppMessagingCore::handleInAppMessageButtonAction(const VantixInAppMessagePayload& message) {
    runOnMainThread(
        [displayManager = displayManager_, shared = std::make_shared<const VantixInAppMessagePayload>(message)] {
            displayManager->handleInAppMessageButtonAction(shared, {}, {}, {}, {});
        });
}

std::optional<Image> InAppMessagingCore::getPlaceholderImage() const { return configuration_->placeholderImage(); }

Dictionary InAppMessagingCore::getAttributesForEventReporting(const VantixInAppMessagePayload& message,
                                                              bool includeType, std::optional<int> rating,
                                                              const std::optional<std::string>& feedback,
                                                              const std::optional<std::vector<int>>& feedbackOptions) {
    return vantix::getAttributesForEventReporting(message, includeType, rating, feedback, feedbackOptions);
}

}  // namespace vantix
