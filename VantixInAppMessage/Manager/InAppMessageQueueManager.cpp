#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Core/OutOfMemory.h"
#include "VantixInAppMessage/templates/VantixUtility.h"
#include "VantixPushNotification/NotificationCore.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Manager/InAppMessageQueueManager"};

/// Whether everything that the trigger asks for is there and equal. What the event carries beside it does not matter.
bool matches(const Dictionary& asked, const std::optional<Dictionary>& carried) {
    if (asked.isEmpty()) return true;
    if (!carried) return false;
    return std::all_of(asked.begin(), asked.end(), [&](const Dictionary::Entry& entry) {
        const Value* value = carried->find(entry.first);
        return value && VantixUtility::equals(entry.second, *value);
    });
}

/// The records' messages. Those among the known ones are taken from there.
InAppMessageQueues::Messages decoded(const std::vector<InAppMessage>& records,
                                     const InAppMessageQueues::Messages& known) {
    constexpr auto function = "getAllInAppMessages(completion:)";
    std::unordered_map<std::string_view, SharedPayload> byImage;
    for (const SharedPayload& message : known) {
        // One that is left out is decoded anew.
        dropWhenOutOfMemory(log, function, [&] { byImage.emplace(message->imageIdentifier, message); });
    }

    InAppMessageQueues::Messages messages;
    for (const InAppMessage& record : records) {
        dropWhenOutOfMemory(log, function, [&] {
            auto found = byImage.find(record[InAppMessage::Property::imageIdentifier].value_or(""));
            bool isKnown = found != byImage.end() && InAppRepoHelper::record(*found->second) == record;
            messages.push_back(isKnown ? found->second
                                       : std::make_shared<const VantixInAppMessagePayload>(
                                             VantixInAppMessagePayload::generate(record)));
        });
    }
    return messages;
}

void freeElsewhere(std::shared_ptr<const InAppMessageQueues> emptied) {
    Platform::current()->dispatcher->utilityQueue().async([emptied = std::move(emptied)] {});
}

}  // namespace

void InAppMessageQueueManager::insert(const SharedPayload& message, Completion completion) {
    if (message->trigger.type() != VantixInAppNotificationTriggerType::appLaunch)
        return insertInAppMessage(message, std::move(completion));

    auto goOn = whileAlive(weak_from_this(), [message, completion = std::move(completion)](auto& manager) {
        manager.insertInAppMessage(message, completion);
    });
    inAppRepoHelper_->removeAllExistingBroadcastMessages([goOn](bool removed) {
        if (!removed)
            log.error("insert(message:completion:)", "Failed to remove existing broadcast type inapp messages");
        goOn();
    });
}

void InAppMessageQueueManager::insertInAppMessage(const SharedPayload& message, Completion completion) {
    inAppRepoHelper_->insert(message, whileAlive(weak_from_this(), [message, completion = std::move(completion)](
                                                                       auto& manager, bool inserted) {
                                 if (inserted) manager.updateQueues(message);
                                 if (completion) completion(inserted);
                             }));
}

void InAppMessageQueueManager::updateQueues(const SharedPayload& message) {
    queues_.update([&](InAppMessageQueues& queues) { queues.updateQueues(message); });
}

void InAppMessageQueueManager::updateInAppMessagesOnAppLaunch(Completion completion) {
    auto emptied = reset();
    if (!NotificationCore::isAllowed()) return freeElsewhere(std::move(emptied));
    auto before = rebuilds_.update([&](Rebuilds& rebuilds) {
        if (rebuilds.isUnderWay) {
            rebuilds.isNextAskedFor = true;
            if (completion) rebuilds.completions.push_back(completion);
        }
        rebuilds.isUnderWay = true;
    });
    if (before->isUnderWay) return freeElsewhere(std::move(emptied));
    getAllInAppMessages([emptied = std::move(emptied), completion = std::move(completion)](bool rebuilt) {
        if (completion) completion(rebuilt);
    });
}

void InAppMessageQueueManager::getAllInAppMessages(Completion completion) {
    inAppRepoHelper_->fetchAllInAppMessages(
        whileAlive(weak_from_this(), [completion = std::move(completion)](auto& manager, const auto& records) {
            manager.rebuildQueues(records);
            completion(true);
            if (manager.onRebuilt_) manager.onRebuilt_();
            manager.rebuildEnded();
        }));
}

void InAppMessageQueueManager::rebuildEnded() {
    auto before = rebuilds_.update([](Rebuilds& rebuilds) { rebuilds = {.isUnderWay = rebuilds.isNextAskedFor}; });
    if (!before->isNextAskedFor) return;
    getAllInAppMessages([before](bool rebuilt) {
        for (const Completion& completion : before->completions) completion(rebuilt);
    });
}

void InAppMessageQueueManager::rebuildQueues(const std::vector<InAppMessage>& records) {
    if (records.empty()) log.debug("getAllInAppMessages(completion:)", "No pending in app messages in database");
    auto messages = decoded(records, *queues_.load()->rebuiltMessages);
    queues_.update([&](InAppMessageQueues& queues) { queues.rebuild(messages); });
}

std::shared_ptr<const InAppMessageQueues> InAppMessageQueueManager::reset() {
    return queues_.update([](InAppMessageQueues& queues) { queues.reset(); });
}

SharedPayload InAppMessageQueueManager::getInAppMessage(const std::optional<std::string>& eventName,
                                                        const std::optional<Dictionary>& attributes) const {
    if (eventName) return getOtherTypeInAppMessage(*eventName, attributes);
    auto queues = queues_.load();
    return queues->milestoneMessagesAvailable() ? queues->milestoneInAppMessages.first()
                                                : queues->broadcastInAppMessage;
}

SharedPayload InAppMessageQueueManager::getOtherTypeInAppMessage(const std::string& eventName,
                                                                 const std::optional<Dictionary>& attributes) const {
    return queues_.load()->otherInAppMessages.first(eventName, [&](const VantixInAppMessagePayload& message) {
        return matches(message.trigger.attributes, attributes);
    });
}

void InAppMessageQueueManager::removeShownInAppMessage(const std::optional<std::string>& eventName) {
    if (auto message = getInAppMessage(eventName, {})) removeInAppMessage(*message);
}

void InAppMessageQueueManager::removeInAppMessage(const VantixInAppMessagePayload& message) {
    queues_.update([&](InAppMessageQueues& queues) { queues.remove(message); });
    auto ended = whileAlive(weak_from_this(), [scope = message.scope](auto& manager) {
        manager.queues_.update([&](InAppMessageQueues& queues) { queues.removalEnded(scope); });
    });
    inAppRepoHelper_->removeMessage(message.scope, [ended](bool) { ended(); });
}

void InAppMessageQueueManager::removeAllMessages(Completion completion) {
    inAppRepoHelper_->removeAllMessages(whileAlive(
        weak_from_this(), [emptied = reset(), completion = std::move(completion)](auto& manager, bool removed) {
            // Inserts and rebuilds that the store did before may have filled the queues again.
            if (removed) manager.queues_.update([](InAppMessageQueues& queues) { queues.forget(); });
            if (completion) completion(removed);
        }));
}

void InAppMessageQueueManager::removeAllExistingBroadcastMessages(Completion completion) {
    inAppRepoHelper_->removeAllExistingBroadcastMessages(unlessGone(std::move(completion)));
}

void InAppMessageQueueManager::removeMessage(const std::string& scope, Completion completion) {
    inAppRepoHelper_->removeMessage(scope, unlessGone(std::move(completion)));
}

void InAppMessageQueueManager::fetchAllInAppMessages(InAppRepoHelper::ListCompletion completion) {
    inAppRepoHelper_->fetchAllInAppMessages(
        whileAlive(weak_from_this(), [completion = std::move(completion)](auto&, std::vector<InAppMessage> messages) {
            completion(std::move(messages));
        }));
}

InAppMessageQueueManager::Completion InAppMessageQueueManager::unlessGone(Completion completion) {
    return whileAlive(weak_from_this(), [completion = std::move(completion)](auto&, bool succeeded) {
        if (completion) completion(succeeded);
    });
}

}  // namespace vantix
