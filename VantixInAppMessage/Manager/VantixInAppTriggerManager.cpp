#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"

#include "Platform/Values/JSON.h"
#include "Platform/Values/JSONText.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"
#include "VantixInAppMessage/Core/OutOfMemory.h"
#include "VantixInAppMessage/Manager/InAppRepoHelper.h"

#include <exception>
#include <string>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Manager/InAppMessageTriggerManager"};

void logError(const std::exception& error) {
    log.error("syncTriggers(withPayload:)", [&] { return std::string("Error: ") + error.what(); });
}

/// Runs a step of a sync; one that fails, for want of memory perhaps, is the last one.
template <typename Step>
void attempt(Step step) {
    try {
        step();
    } catch (const std::exception& error) {
        logError(error);
    }
}

bool isSuccess(const InAppTriggerAPIResponse& response) {
    auto status = response.status ? wholeNumber(*response.status) : std::nullopt;
    return status == 200 || status == 201;
}

}  // namespace

std::shared_ptr<VantixInAppTriggerManager> VantixInAppTriggerManager::create(
    std::shared_ptr<ConfigurationGenerator> configData) {
    return std::shared_ptr<VantixInAppTriggerManager>(new VantixInAppTriggerManager(std::move(configData)));
}

VantixInAppTriggerManager::VantixInAppTriggerManager(std::shared_ptr<ConfigurationGenerator> configData)
    : configData_(std::move(configData)), triggerAPIRequest_(configData_) {}

void VantixInAppTriggerManager::syncTriggers(const InAppTriggersRequestPayload& payload) {
    attempt([&] { call(payload); });
}

void VantixInAppTriggerManager::call(const InAppTriggersRequestPayload& payload) {
    auto process = [self = shared_from_this(), payload](const VantixNetworkManager::Outcome& outcome) {
        attempt([&] { self->process(outcome, payload); });
    };
    triggerAPIRequest_.syncTriggers(payload.generateJSON(), configData_->accountID(), process).detach();
}

void VantixInAppTriggerManager::process(const VantixNetworkManager::Outcome& outcome,
                                        const InAppTriggersRequestPayload& payload) {
    if (outcome) return processReceived(outcome.value(), payload);
    const VantixError& error = outcome.error();
    logError(error);
    handleFailure({}, error.code(), error, payload);
}

void VantixInAppTriggerManager::processReceived(const Response& response,
                                                const InAppTriggersRequestPayload& requestPayload) {
    dropWhenOutOfMemory(log, "processReceived(response:requestPayload:)", [&] { store(response, requestPayload); });
}

void VantixInAppTriggerManager::store(const Response& response, const InAppTriggersRequestPayload& requestPayload) {
    constexpr auto function = "processReceived(response:requestPayload:)";
    if (!response || !response->rcvdData()) return log.error(function, "Recieved nil data");

    const std::string& data = *response->rcvdData();
    if (!isJSON(data)) {
        return log.error(function, [&] {
            return "Event API Response decoding failed: " + parseJSON(data).error().localizedDescription;
        });
    }
    if (!isObject(data)) return;

    auto answer = InAppTriggerAPIResponse::generate(data);
    if (!isSuccess(answer)) return handleFailure(answer, 0, response->error(), requestPayload);
    if (!answer.triggers) return;
    // The messages are read out of the response, which is kept for that long.
    InAppRepoHelper::shared()->insertEach([response, triggers = *answer.triggers]() mutable -> SharedPayload {
        SharedPayload message;
        auto take = [&] {
            if (auto next = triggers.next())
                message = std::make_shared<const VantixInAppMessagePayload>(*std::move(next));
        };
        while (!dropWhenOutOfMemory(log, function, take)) continue;
        return message;
    });
}

/// Nothing on purpose: a sync that failed is neither repeated nor reported.
void VantixInAppTriggerManager::handleFailure(const std::optional<InAppTriggerAPIResponse>&, int,
                                              const std::optional<VantixError>&, const InAppTriggersRequestPayload&) {}

}  // namespace vantix
