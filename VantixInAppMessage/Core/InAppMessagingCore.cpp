#include "VantixInAppMessage/Core/InAppMessagingCore.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/FatalError.h"
#include "VantixCore/VantixConstants.h"
#include "VantixCore/VantixImageView.h"
#include "VantixInAppMessage/Manager/InAppDisplayManager.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "Platform/Ports/MainThread.h"
#include "VantixInAppMessage/Resources/ResourceBundle.h"

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
}

void InAppMessagingCore::registerListeners() {
    VantixImageView::setDefaultPlaceholder([weak = weak_from_this()] {
        auto core = weak.lock();
        auto configured = core ? core->getPlaceholderImage() : std::nullopt;
        return configured ? *configured : ImageResource::defaultImage().image();
    });
    triggerObservation_ = Platform::current()->notificationCenter->addObserver(
        VantixNotification::didCaptureInAppTrigger, [weak = weak_from_this()](const Notification& notification) {
            if (auto core = weak.lock()) core->inAppTriggerCaptured(notification);
        });
    if (!notificationCore_) return;
    notificationCore_->registerSilentPushListener(std::string(rawValue(VantixNotificationType::inapp)),
                                                  shared_from_this());
    notificationCore_->addNotificationReceiver(shared_from_this());
}

InAppMessagingCore::~InAppMessagingCore() {
    runOnMainThread([displayManager = displayManager_] { displayManager->tearDown(); });
}

void InAppMessagingCore::tearDown() {
    isTornDown_ = true;
    triggerObservation_ = nullptr;
    displayManager_->tearDown();
}

void InAppMessagingCore::silentPushListener(const VantixInAppMessagePayload& notification, Completion completion) {
    if (notification.scope.empty()) return;
    if (notification.trigger.eventName.empty()) return;
    inAppMessaseReceived(notification, true, std::move(completion));
}

void InAppMessagingCore::userLoggedOut() { removeAllInAppMessages(); }

void InAppMessagingCore::dismissInAppMessage(const VantixInAppMessagePayload& message) {
    runOnMainThread([displayManager = displayManager_, message] { displayManager->dismissInAppMessage(message); });
}

void InAppMessagingCore::handleInAppMessageButtonAction(const VantixInAppMessagePayload& message) {
    runOnMainThread([displayManager = displayManager_, message] {
        displayManager->handleInAppMessageButtonAction(message, {}, {}, {}, {});
    });
}

std::optional<Image> InAppMessagingCore::getPlaceholderImage() const { return configuration_->placeholderImage(); }

}  // namespace vantix
