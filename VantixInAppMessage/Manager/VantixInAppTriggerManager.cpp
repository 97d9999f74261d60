#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"
#include "VantixInAppMessage/Manager/InAppRepoHelper.h"

#include <exception>
#include <string>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Manager/InAppMessageTriggerManager"};

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
    Platform::current()->dispatcher->utilityQueue().async(
        [self = shared_from_this(), payload] { self->callAndProcess(payload); });
}

void VantixInAppTriggerManager::callAndProcess(const InAppTriggersRequestPayload& payload) {
    auto logError = [](const std::exception& error) {
        log.error("syncTriggers(withPayload:)", [&] { return std::string("Error: ") + error.what(); });
    };
    try {
        auto response = triggerAPIRequest_.syncTriggers(payload.generateJSON(), configData_->accountID());
        processReceived(response, payload);
    } catch (const VantixError& error) {
        logError(error);
        handleFailure({}, error.code(), error, payload);
    } catch (const std::exception& error) {
        logError(error);
    }
}

void VantixInAppTriggerManager::processReceived(const std::shared_ptr<const VantixResponseGenerator>& response,
                                                const InAppTriggersRequestPayload& requestPayload) {
    constexpr auto function = "processReceived(response:requestPayload:)";
    if (!response || !response->rcvdData()) return log.error(function, "Recieved nil data");

    auto parsed = parseJSON(*response->rcvdData());
    if (!parsed) {
        return log.error(function,
                         [&] { return "Event API Response decoding failed: " + parsed.error().localizedDescription; });
    }
    const Dictionary* dictionary = parsed.value().dictionary();
    if (!dictionary) return;

    auto answer = InAppTriggerAPIResponse::generate(*dictionary);
    if (!isSuccess(answer)) return handleFailure(answer, 0, response->error(), requestPayload);
    if (!answer.triggers) return;
    for (auto& message : *answer.triggers) {
        InAppRepoHelper::shared()->insert(std::make_shared<const VantixInAppMessagePayload>(std::move(message)), {});
    }
}

/// Nothing on purpose: a sync that failed is neither repeated nor reported.
void VantixInAppTriggerManager::handleFailure(const std::optional<InAppTriggerAPIResponse>&, int,
                                              const std::optional<VantixError>&, const InAppTriggersRequestPayload&) {}

}  // namespace vantix
