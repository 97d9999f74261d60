#include "VantixInAppMessage/Manager/InAppRepoHelper.h"

#include "VantixCore/Vantix.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Core/OutOfMemory.h"
#include "VantixInAppMessage/Manager/VantixInAppDBDefaults.h"

#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Manager/InAppRepoHelper"};

/// The log lines of one operation's outcome.
struct OutcomeTexts {
    const char* function;
    const char* success;
    const char* failure;
    /// Stands before the error's description.
    const char* reason;
    /// Stands behind success and failure; made only for a line that is written, since it may be long.
    std::function<std::string()> subject = [] { return std::string(); };
};

constexpr auto insertFunction = "insert(message:completion:)";

OutcomeTexts insertTexts(std::function<std::string()> subject) {
    return {insertFunction, "Successfully inserted in app message with message ",
            "Failed to insert in app message with message ", " with error ", std::move(subject)};
}

/// Logs the outcome of a store operation and passes it on as a boolean.
std::function<void(Result<bool>)> reporting(OutcomeTexts texts, InAppRepoHelper::Completion completion) {
    return [texts = std::move(texts), completion = std::move(completion)](const Result<bool>& result) {
        bool succeeded = result && result.value();
        if (succeeded) {
            log.debug(texts.function, [&] { return texts.success + texts.subject(); });
        } else {
            log.error(texts.function, [&] {
                std::string reason = result ? "" : texts.reason + result.error().localizedDescription;
                return texts.failure + texts.subject() + reason;
            });
        }
        if (completion) completion(succeeded);
    };
}

/// The attributes of the record that have a text.
std::map<std::string, std::string> insertValues(const InAppMessage& record) {
    std::map<std::string, std::string> values;
    for (int at = 0; at < InAppMessage::propertyCount; ++at) {
        auto property = static_cast<InAppMessage::Property>(at);
        if (record[property]) values[InAppMessage::name(property)] = *record[property];
    }
    return values;
}

}  // namespace

std::shared_ptr<InAppRepoHelper> InAppRepoHelper::shared() { return Vantix::shared<InAppRepoHelper>(); }

InAppRepoHelper::InAppRepoHelper(Env environment)
    : inAppRepo_(VantixInAppDBDefaults::repository(environment)), settings_(Vantix::getSharedUserDefaults()) {}

InAppMessage InAppRepoHelper::record(const VantixInAppMessagePayload& message) {
    using Property = InAppMessage::Property;
    InAppMessage record;
    auto set = [&](Property property, const std::optional<std::string>& text) {
        record.values[static_cast<std::size_t>(property)] = text;
    };
    set(Property::cuid, message.cuid);
    set(Property::scope, message.scope);
    set(Property::campaignId, message.campaignId);
    set(Property::variationId, message.variationId);
    set(Property::senderID, message.senderID);
    set(Property::senderSource, message.senderSource);
    set(Property::custom, message.custom);
    set(Property::priority, message.priority);
    set(Property::validity, message.validity);
    set(Property::trigger, message.trigger.textRepresentation);
    set(Property::body, message.body.textRepresentation);
    set(Property::imageIdentifier, message.imageIdentifier);
    set(Property::templateText, message.style.textRepresentation);
    return record;
}

void InAppRepoHelper::insert(const SharedPayload& message, Completion completion) {
    inAppRepo_->insert(insertValues(record(*message)),
                       reporting(insertTexts([message] { return message->description(); }), std::move(completion)));
}

void InAppRepoHelper::insertEach(std::function<SharedPayload()> next) {
    auto message = std::make_shared<SharedPayload>();
    auto nextValues = [message, next = std::move(next)] {
        std::optional<std::map<std::string, std::string>> values;
        auto take = [&] {
            *message = next();
            if (*message) values = insertValues(record(**message));
        };
        while (!dropWhenOutOfMemory(log, insertFunction, take)) continue;
        return values;
    };
    auto report = reporting(insertTexts([message] { return (*message)->description(); }), {});
    inAppRepo_->insertEach(nextValues, [report = std::move(report)](const Result<bool>& result) {
        dropWhenOutOfMemory(log, insertFunction, [&] { report(result); });
    });
}

void InAppRepoHelper::fetchAllInAppMessages(ListCompletion completion) {
    constexpr auto function = "fetchAllInAppMessages(completion:)";
    if (!settings_) {
        log.error(
            function,
            "Unable to store the customer id because either customerId is empty or App group is not setup properly.");
        return completion({});
    }
    auto customerId = settings_->customerId();
    if (!customerId) {
        log.error(function, "customer-cuid not exist");
        return completion({});
    }

    Predicate ofCustomer{InAppMessage::name(InAppMessage::Property::cuid), Predicate::Comparison::equals, *customerId};
    inAppRepo_->fetch(ofCustomer, {}, [completion = std::move(completion)](Result<std::vector<Record>> result) {
        std::vector<InAppMessage> messages;
        if (result) {
            for (Record& record : std::move(result).value()) messages.push_back(InAppMessage::from(std::move(record)));
        } else {
            log.error(function, [&] {
                return "Failed to fetch in app messages with error " + result.error().localizedDescription;
            });
        }
        completion(std::move(messages));
    });
}

void InAppRepoHelper::removeMessage(const std::string& scope, Completion completion) {
    removeInAppMessage(
        Predicate{InAppMessage::name(InAppMessage::Property::scope), Predicate::Comparison::equals, scope}, 1,
        reporting({"removeMessage(with:completion:)", "Successfully removed in app message with message id ",
                   "Failed to remove in app message with message id ", " with error ", [scope] { return scope; }},
                  std::move(completion)));
}

void InAppRepoHelper::removeAllExistingBroadcastMessages(Completion completion) {
    removeInAppMessage(
        Predicate{InAppMessage::name(InAppMessage::Property::trigger), Predicate::Comparison::containsIgnoringCase,
                  std::string(rawValue(VantixInAppNotificationTriggerType::appLaunch))},
        {},
        reporting({"removeAllExistingBroadcastMessages(completion:)",
                   "Successfully removed all existing broadcast in app messages",
                   "Failed to remove all existing broadcast in app messages", " with error "},
                  std::move(completion)));
}

void InAppRepoHelper::removeAllMessages(Completion completion) {
    inAppRepo_->batchDelete(InAppMessage::fetchRequest(),
                            reporting({"removeAllMessages(completion:)", "Successfully deleted all the in-app messages",
                                       "Failed to delete all the in-app messages", " due to error: "},
                                      std::move(completion)));
}

void InAppRepoHelper::removeInAppMessage(std::optional<Predicate> predicate, std::optional<int> fetchLimit,
                                         std::function<void(Result<bool>)> completion) {
    FetchRequest request = InAppMessage::fetchRequest();
    request.predicate = std::move(predicate);
    request.fetchLimit = fetchLimit;
    inAppRepo_->batchDelete(request, std::move(completion));
}

}  // namespace vantix
