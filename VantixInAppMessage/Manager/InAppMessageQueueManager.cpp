#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"

#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/templates/VantixUtility.h"
#include "VantixPushNotification/NotificationCore.h"

#include <algorithm>

namespace vantix {

namespace {

constexpr const char* file = "Manager/InAppMessageQueueManager";

/// Whether everything that the trigger asks for is there and equal. What the event carries beside it does not matter.
bool matches(const Dictionary& asked, const std::optional<Dictionary>& carried) {
    if (asked.isEmpty()) return true;
    if (!carried) return false;
    return std::all_of(asked.begin(), asked.end(), [&](const Dictionary::Entry& entry) {
        const Value* value = carried->find(entry.first);
        return value && VantixUtility::equals(entry.second, *value);
    });
}

}  // namespace

void InAppMessageQueueManager::insert(const VantixInAppMessagePayload& message, Completion completion) {
    if (triggerType(message) != VantixInAppNotificationTriggerType::appLaunch)
        return insertInAppMessage(message, std::move(completion));

    inAppRepoHelper_->removeAllExistingBroadcastMessages(
        [weak = weak_from_this(), message, completion = std::move(completion)](bool removed) {
            auto manager = weak.lock();
            if (!removed) {
                VantixLogger::error("Failed to remove existing broadcast type inapp messages",
                                    {file, "insert(message:completion:)"});
            }
            if (manager) manager->insertInAppMessage(message, completion);
        });
}

void InAppMessageQueueManager::insertInAppMessage(const VantixInAppMessagePayload& message, Completion completion) {
    inAppRepoHelper_->insert(message,
                             [weak = weak_from_this(), message, completion = std::move(completion)](bool inserted) {
                                 auto manager = weak.lock();
                                 if (!manager) return;
                                 if (inserted) manager->updateQueues(message);
                                 if (completion) completion(inserted);
                             });
}

void InAppMessageQueueManager::updateQueues(const VantixInAppMessagePayload& message) {
    auto shared = std::make_shared<const VantixInAppMessagePayload>(message);
    queues_.update([&](InAppMessageQueues& queues) { queues.updateQueues(shared); });
}

void InAppMessageQueueManager::updateInAppMessagesOnAppLaunch(Completion completion) {
    reset();
    getAllInAppMessages(std::move(completion));
}

void InAppMessageQueueManager::getAllInAppMessages(Completion completion) {
    if (!NotificationCore::isAllowed()) return;
    queues_.update([](InAppMessageQueues& queues) { queues.beginRebuild(); });
    fetchAllInAppMessages([weak = weak_from_this(),
                           completion = std::move(completion)](const std::vector<InAppMessage>& records) {
        auto manager = weak.lock();
        if (!manager) return;
        if (records.empty()) {
            VantixLogger::debug("No pending in app messages in database", {file, "getAllInAppMessages(completion:)"});
        }
        InAppMessageQueues::Messages messages;
        for (const InAppMessage& record : records) {
            messages.push_back(
                std::make_shared<const VantixInAppMessagePayload>(VantixInAppMessagePayload::generate(record)));
        }
        manager->queues_.update([&](InAppMessageQueues& queues) { queues.finishRebuild(messages); });
        if (completion) completion(true);
        if (manager->onRebuilt_) manager->onRebuilt_();
    });
}

void InAppMessageQueueManager::reset() {
    queues_.update([](InAppMessageQueues& queues) { queues.reset(); });
}

std::optional<VantixInAppMessagePayload> InAppMessageQueueManager::getInAppMessage(
    const std::optional<std::string>& eventName, const std::optional<Dictionary>& attributes) const {
    if (eventName) return getOtherTypeInAppMessage(*eventName, attributes);
    auto queues = queues_.load();
    if (queues->milestoneMessagesAvailable()) return *queues->milestoneInAppMessages.front();
    if (queues->broadCastMessagesAvailable()) return *queues->broadcastInAppMessage;
    return {};
}

std::optional<VantixInAppMessagePayload> InAppMessageQueueManager::getOtherTypeInAppMessage(
    const std::string& eventName, const std::optional<Dictionary>& attributes) const {
    auto queues = queues_.load();
    for (const auto& message : queues->otherInAppMessages) {
        const NotificationTrigger& trigger = message->trigger;
        if (trigger.eventName == eventName && matches(trigger.attributes, attributes)) return *message;
    }
    return {};
}

void InAppMessageQueueManager::removeShownInAppMessage(const std::optional<std::string>& eventName) {
    if (auto message = getInAppMessage(eventName, {})) removeInAppMessage(*message);
}

void InAppMessageQueueManager::removeInAppMessage(const VantixInAppMessagePayload& message) {
    queues_.update([&](InAppMessageQueues& queues) { queues.remove(message); });
    removeMessage(message.scope, {});
}

void InAppMessageQueueManager::removeAllMessages(Completion completion) {
    reset();
    inAppRepoHelper_->removeAllMessages([weak = weak_from_this(), completion = std::move(completion)](bool removed) {
        // Inserts and rebuilds that the store did before may have filled the queues again.
        auto manager = weak.lock();
        if (manager) manager->reset();
        if (completion) completion(removed);
    });
}

void InAppMessageQueueManager::removeAllExistingBroadcastMessages(Completion completion) {
    inAppRepoHelper_->removeAllExistingBroadcastMessages(std::move(completion));
}

void InAppMessageQueueManager::removeMessage(const std::string& scope, Completion completion) {
    inAppRepoHelper_->removeMessage(scope, std::move(completion));
}

void InAppMessageQueueManager::fetchAllInAppMessages(InAppRepoHelper::ListCompletion completion) {
    inAppRepoHelper_->fetchAllInAppMessages(std::move(completion));
}

}  // namespace vantix
