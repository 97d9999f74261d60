#pragma once

#include "VantixCore/VantixConfiguration.h"
#include "VantixCore/VantixError.h"
#include "VantixCore/VantixResponseGenerator.h"
#include "VantixInAppMessage/API/InAppTriggerAPIResponse.h"
#include "VantixInAppMessage/API/InAppTriggersRequest.h"
#include "VantixInAppMessage/API/InAppTriggersRequestPayload.h"

#include <memory>
#include <optional>

namespace vantix {

/// Fetches the messages that wait for triggers into the store. Shows nothing and leaves the queues alone: they learn of
/// the messages when they are next rebuilt. Usable from any thread.
class VantixInAppTriggerManager final : public std::enable_shared_from_this<VantixInAppTriggerManager> {
public:
    /// The configuration must not be null. After Platform::install and Vantix::install.
    static std::shared_ptr<VantixInAppTriggerManager> create(std::shared_ptr<ConfigurationGenerator> configData);

    /// Asks the back end once, in the background, and returns at once. What goes wrong is a log line.
    void syncTriggers(const InAppTriggersRequestPayload& payload);

    /// Stores every message of a successful answer, as it comes, one after the other, in the background; whatever the
    /// store is asked later, it does after the last of them. Of success tells the status within the answer alone, the
    /// texts "200" and "201". A host may bring an answer of its own; null counts as one without data.
    void processReceived(const std::shared_ptr<const VantixResponseGenerator>& response,
                         const InAppTriggersRequestPayload& requestPayload);

private:
    explicit VantixInAppTriggerManager(std::shared_ptr<ConfigurationGenerator> configData);

    using Response = std::shared_ptr<const VantixResponseGenerator>;

    void call(const InAppTriggersRequestPayload& payload);
    void process(const VantixNetworkManager::Outcome& outcome, const InAppTriggersRequestPayload& payload);
    void store(const Response& response, const InAppTriggersRequestPayload& requestPayload);
    void handleFailure(const std::optional<InAppTriggerAPIResponse>& response, int rcvdHTTPStatusCode,
                       const std::optional<VantixError>& error, const InAppTriggersRequestPayload& requestPayload);

    std::shared_ptr<ConfigurationGenerator> configData_;
    InAppTriggersRequest triggerAPIRequest_;
};

}  // namespace vantix
