#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/VantixConstants.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Core/InAppMessagingCore.h"
#include "VantixInAppMessage/Manager/InAppDisplayManager.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"

#include <algorithm>
#include <cctype>

// How campaigns enter the module, and how captured events make stored ones appear.

namespace vantix {

namespace {

constexpr const char* file = "Core/InAppMessagingCore";

/// Banners take their image over a secure connection only.
bool hasInsecureBannerImage(const InAppBody& body) {
    bool isBanner =
        body.type == VantixInAppNotificationType::header || body.type == VantixInAppNotificationType::footer;
    if (!isBanner || body.image.empty()) return false;
    std::string lowerCased = body.image;
    std::transform(lowerCased.begin(), lowerCased.end(), lowerCased.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lowerCased.find("https:") == std::string::npos;
}

}  // namespace

void InAppMessagingCore::handleSilentPushNotification(const Dictionary& notification) {
    constexpr LegacyLogSource source{file, "handleSilentPushNotification(with:)"};
    auto payload = VantixInAppMessagePayload::generate(notification);
    VantixLogger::debug(VantixConstants::checkMark + std::string("-Notification Payload: ") + toJSON(notification),
                        source);
    VantixLogger::debug(VantixConstants::checkMark + std::string("-Processing Selvane InApp message"), source);
    silentPushListener(payload);
}

void InAppMessagingCore::notificationsReceived(
    const std::optional<std::vector<VantixNotificationPayload>>& notifications) {
    if (!notifications) return;
    for (const VantixNotificationPayload& notification : *notifications) {
        if (notification.type() != rawValue(VantixNotificationType::inapp)) continue;
        inAppMessaseReceived(VantixInAppMessagePayload::generate(notification.getJSON()), false);
    }
}

void InAppMessagingCore::inAppMessaseReceived(const VantixInAppMessagePayload& message, bool showInAppImmediately,
                                              Completion completion) {
    if (isTornDown_) return;
    constexpr LegacyLogSource source{file, "inAppMessaseReceived(message:showInAppImmediately:completion:)"};
    if (hasInsecureBannerImage(message.body)) {
        VantixLogger::error(
            "Header and Footer type in-app message with image should have valid image URL. Seems like the in-app "
            "message with scope " +
                message.scope + " has invalid image URL:" + message.body.image +
                ". So we are ignoring this in-app message and not storing it in the database.",
            source);
        return;
    }

    queueManager_->insert(message, [weak = weak_from_this(), message, showInAppImmediately,
                                    completion = std::move(completion), source](bool inserted) {
        if (!inserted) {
            VantixLogger::error("Error while inserting the in-app message with payload " + message.description(),
                                source);
            if (completion) completion(false);
            return;
        }
        VantixLogger::info("Successfully inserted the in-app message with payload " + message.description(), source);
        auto finish = [weak, message, showInAppImmediately, completion] {
            showStoredMessage(weak, message, showInAppImmediately);
            if (completion) completion(true);
        };
        if (!message.getImageURL()) return finish();
        // Leaves the store thread, which must not wait for the image.
        Platform::current()->dispatcher->utilityQueue().async(finish);
    });
}

void InAppMessagingCore::showStoredMessage(const std::weak_ptr<InAppMessagingCore>& weak,
                                           const VantixInAppMessagePayload& message, bool showInAppImmediately) {
    // Waiting for the image keeps the display manager, not the core: a core that is let go meanwhile takes no more
    // pushes.
    if (auto displayManager = displayManagerOf(weak)) {
        displayManager->downloadInAppMessageImageIfAvailable(message, false);
    }
    if (!showInAppImmediately) return;
    Platform::current()->dispatcher->mainQueue().async([weak] {
        if (auto displayManager = displayManagerOf(weak)) displayManager->showInAppMessage({}, {});
    });
}

std::shared_ptr<InAppDisplayManager> InAppMessagingCore::displayManagerOf(
    const std::weak_ptr<InAppMessagingCore>& weak) {
    auto core = weak.lock();
    return core ? core->displayManager_ : nullptr;
}

void InAppMessagingCore::inAppTriggerCaptured(const Notification& notification) {
    if (isTornDown_ || notification.name != VantixNotification::didCaptureInAppTrigger) return;
    auto event = std::any_cast<std::shared_ptr<const EventProtocol>>(&notification.object);
    if (!event || !*event) return;
    const auto& [name, attributes] = **event;
    if (!queueManager_->getInAppMessage(name, attributes)) return;
    displayManager_->showInAppMessage(name, attributes);
}

void InAppMessagingCore::removeAllInAppMessages() {
    queueManager_->removeAllMessages([weak = weak_from_this()](bool removed) {
        constexpr LegacyLogSource source{file, "removeAllInAppMessages()"};
        if (weak.expired()) return;
        if (!removed) return VantixLogger::error("Error while deleting all the in-app messages", source);
        VantixLogger::debug("Successfully deleted all the in-app messages", source);
        ImageUtility::removeAllCachedImages();
    });
}

std::shared_ptr<DispatchWorkItem> InAppMessagingCore::generateWorkItem(std::function<void()> block) const {
    return std::make_shared<DispatchWorkItem>(QualityOfService::utility, WorkItemFlags::enforceQoS, std::move(block));
}

}  // namespace vantix
