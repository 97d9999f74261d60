#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"

#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/templates/VantixUtility.h"
#include "VantixPushNotification/NotificationCore.h"

#include <algorithm>

namespace vantix {

namespace {

using TriggerType = VantixInAppNotificationTriggerType;
using Messages = InAppMessageQueueManager::Messages;

constexpr const char* file = "Manager/InAppMessageQueueManager";

std::optional<TriggerType> triggerType(const VantixInAppMessagePayload& message) {
    return inAppNotificationTriggerType(message.trigger.eventName);
}

bool isTriggeredBy(const VantixInAppMessagePayload& message, TriggerType type) { return triggerType(message) == type; }

/// Whether everything that the trigger asks for is there and equal. What the event carries beside it does not matter.
bool matches(const Dictionary& asked, const std::optional<Dictionary>& carried) {
    if (asked.isEmpty()) return true;
    if (!carried) return false;
    return std::all_of(asked.begin(), asked.end(), [&](const Dictionary::Entry& entry) {
        const Value* value = carried->find(entry.first);
        return value && VantixUtility::equals(entry.second, *value);
    });
}

void removeFirst(Messages& messages, const std::string& scope) {
    auto found =
        std::find_if(messages.begin(), messages.end(), [&](const auto& message) { return message->scope == scope; });
    if (found != messages.end()) messages.erase(found);
}

/// The newest launch message. Messages without a time of creation keep the store's order.
std::shared_ptr<const VantixInAppMessagePayload> newestBroadcast(Messages messages) {
    std::stable_sort(messages.begin(), messages.end(), [](const auto& a, const auto& b) {
        return a->createdAt && b->createdAt && *a->createdAt < *b->createdAt;
    });
    auto newest = std::find_if(messages.rbegin(), messages.rend(),
                               [](const auto& message) { return isTriggeredBy(*message, TriggerType::appLaunch); });
    return newest == messages.rend() ? nullptr : *newest;
}

}  // namespace

void InAppMessageQueueManager::insert(const VantixInAppMessagePayload& message, Completion completion) {
    if (!isTriggeredBy(message, TriggerType::appLaunch)) return insertInAppMessage(message, std::move(completion));

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
    queues_.update([&](Queues& queues) {
        auto type = triggerType(message);
        if (type == TriggerType::instant) {
            queues.milestoneInAppMessages.push_back(shared);
        } else if (type == TriggerType::appLaunch) {
            queues.broadcastInAppMessage = nullptr;
        } else {
            queues.otherInAppMessages.push_back(shared);
        }
    });
}

void InAppMessageQueueManager::updateInAppMessagesOnAppLaunch(Completion completion) {
    reset();
    getAllInAppMessages(std::move(completion));
}

void InAppMessageQueueManager::getAllInAppMessages(Completion completion) {
    if (!NotificationCore::isAllowed()) return;
    fetchAllInAppMessages([weak = weak_from_this(),
                           completion = std::move(completion)](const std::vector<InAppMessage>& records) {
        auto manager = weak.lock();
        if (!manager) return;
        if (records.empty()) {
            VantixLogger::debug("No pending in app messages in database", {file, "getAllInAppMessages(completion:)"});
        } else {
            manager->rebuild(records);
        }
        if (completion) completion(true);
        if (manager->onRebuilt_) manager->onRebuilt_();
    });
}

void InAppMessageQueueManager::rebuild(const std::vector<InAppMessage>& records) {
    Queues rebuilt;
    for (const InAppMessage& record : records) {
        auto message = std::make_shared<const VantixInAppMessagePayload>(VantixInAppMessagePayload::generate(record));
        if (isTriggeredBy(*message, TriggerType::instant)) rebuilt.milestoneInAppMessages.push_back(message);
        // Every stored message waits here, too, so that an event can name it.
        rebuilt.otherInAppMessages.push_back(message);
    }
    if (rebuilt.milestoneInAppMessages.empty()) {
        rebuilt.broadcastInAppMessage = newestBroadcast(rebuilt.otherInAppMessages);
    }
    queues_.replace(std::move(rebuilt));
}

void InAppMessageQueueManager::reset() { queues_.replace({}); }

std::optional<VantixInAppMessagePayload> InAppMessageQueueManager::getInAppMessage(
    const std::optional<std::string>& eventName, const std::optional<Dictionary>& attributes) const {
    if (eventName) return getOtherTypeInAppMessage(*eventName, attributes);
    auto queues = queues_.load();
    if (!queues->milestoneInAppMessages.empty()) return *queues->milestoneInAppMessages.front();
    if (queues->broadcastInAppMessage) return *queues->broadcastInAppMessage;
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
    queues_.update([&](Queues& queues) {
        auto type = triggerType(message);
        if (type == TriggerType::instant) {
            removeFirst(queues.milestoneInAppMessages, message.scope);
        } else if (type == TriggerType::appLaunch) {
            queues.broadcastInAppMessage = nullptr;
        } else {
            removeFirst(queues.otherInAppMessages, message.scope);
        }
    });
    removeMessage(message.scope, {});
}

void InAppMessageQueueManager::removeAllMessages(Completion completion) {
    reset();
    inAppRepoHelper_->removeAllMessages(std::move(completion));
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
