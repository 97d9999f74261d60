#include "VantixInAppMessage/Core/InAppMessageIntake.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/JSON.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/VantixConstants.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"
#include "VantixInAppMessage/Core/OutOfMemory.h"
#include "VantixInAppMessage/Manager/InAppDisplayManager.h"
#include "VantixInAppMessage/Manager/InAppImageFetcher.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"

#include <utility>

namespace vantix {

namespace {

/// Its log lines are the core's, which takes in through it.
constexpr LogSource log{"Core/InAppMessagingCore"};

SharedPayload decoded(const Dictionary& push) {
    return std::make_shared<const VantixInAppMessagePayload>(VantixInAppMessagePayload::generate(push));
}

/// The event that a notification carries, shared or as it is; null when it carries none.
const EventProtocol* eventOf(const Notification& notification) {
    using Shared = std::shared_ptr<const EventProtocol>;
    if (auto shared = std::any_cast<Shared>(&notification.object)) return shared->get();
    return std::any_cast<EventProtocol>(&notification.object);
}

}  // namespace

InAppMessageIntake::InAppMessageIntake(std::shared_ptr<InAppMessageQueueManager> queueManager,
                                       std::shared_ptr<InAppDisplayManager> displayManager,
                                       std::shared_ptr<InAppImageFetcher> imageFetcher)
    : queueManager_(std::move(queueManager)),
      displayManager_(std::move(displayManager)),
      imageFetcher_(std::move(imageFetcher)) {}

void InAppMessageIntake::handleSilentPushNotification(const Dictionary& notification) {
    constexpr auto function = "handleSilentPushNotification(with:)";
    dropWhenOutOfMemory(log, function, [&] {
        auto message = decoded(notification);
        log.debug(function, [&] {
            return VantixConstants::checkMark + std::string("-Notification Payload: ") + toJSON(notification);
        });
        log.debug(function,
                  [] { return VantixConstants::checkMark + std::string("-Processing Selvane InApp message"); });
        silentPushListener(message, {});
    });
}

void InAppMessageIntake::silentPushListener(const SharedPayload& notification, Completion completion) {
    if (applies(InAppMessageObjection::noScope, *notification)) return;
    if (applies(InAppMessageObjection::noEventName, *notification)) return;
    inAppMessaseReceived(notification, true, std::move(completion));
}

void InAppMessageIntake::notificationsReceived(
    const std::optional<std::vector<VantixNotificationPayload>>& notifications) {
    if (!notifications) return;
    for (const VantixNotificationPayload& notification : *notifications) {
        if (notification.type() != rawValue(VantixNotificationType::inapp)) continue;
        dropWhenOutOfMemory(log, "notificationsReceived(with:)",
                            [&] { inAppMessaseReceived(decoded(notification.getJSON()), false); });
    }
}

void InAppMessageIntake::inAppMessaseReceived(const SharedPayload& message, bool showInAppImmediately,
                                              Completion completion) {
    constexpr auto function = "inAppMessaseReceived(message:showInAppImmediately:completion:)";
    if (isClosed_) return;
    if (applies(InAppMessageObjection::insecureBannerImage, *message)) {
        return log.error(function, [&] {
            return "Header and Footer type in-app message with image should have valid image URL. Seems like the "
                   "in-app message with scope " +
                   message->scope + " has invalid image URL:" + message->body.image +
                   ". So we are ignoring this in-app message and not storing it in the database.";
        });
    }

    auto prepare = whileAlive(weak_from_this(), [message, showInAppImmediately](auto& intake, auto answer) {
        intake.prepare(message, showInAppImmediately, std::move(answer));
    });
    queueManager_->insert(message, [message, prepare, completion = std::move(completion)](bool inserted) {
        auto answer = [completion, inserted] {
            if (completion) completion(inserted);
        };
        if (!inserted) {
            log.error(function, [&] {
                return "Error while inserting the in-app message with payload " + message->description();
            });
            return answer();
        }
        log.info(function,
                 [&] { return "Successfully inserted the in-app message with payload " + message->description(); });
        prepare(answer);
    });
}

void InAppMessageIntake::prepare(const SharedPayload& message, bool showInAppImmediately,
                                 std::function<void()> completion) {
    auto show = whileAlive(weak_from_this(), [](auto& intake) { intake.displayManager_->showInAppMessage({}, {}); });
    auto ended = [show, showInAppImmediately, completion = std::move(completion)](auto&) {
        if (showInAppImmediately) Platform::current()->dispatcher->mainQueue().async(show);
        completion();
    };
    imageFetcher_->fetchImage(message, whileAlive(weak_from_this(), std::move(ended)));
}

void InAppMessageIntake::inAppTriggerCaptured(const Notification& notification) {
    if (isClosed_ || notification.name != VantixNotification::didCaptureInAppTrigger) return;
    const EventProtocol* event = eventOf(notification);
    if (!event) return;
    if (!queueManager_->getInAppMessage(event->name, event->attributes)) return;
    displayManager_->showInAppMessage(event->name, event->attributes);
}

void InAppMessageIntake::removeAllInAppMessages() {
    queueManager_->removeAllMessages(whileAlive(weak_from_this(), [](auto&, bool removed) {
        constexpr auto function = "removeAllInAppMessages()";
        if (!removed) return log.error(function, "Error while deleting all the in-app messages");
        log.debug(function, "Successfully deleted all the in-app messages");
        ImageUtility::removeAllCachedImages();
    }));
}

std::shared_ptr<DispatchWorkItem> InAppMessageIntake::generateWorkItem(std::function<void()> block) const {
    return std::make_shared<DispatchWorkItem>(QualityOfService::utility, WorkItemFlags::enforceQoS, std::move(block));
}

}  // namespace vantix
