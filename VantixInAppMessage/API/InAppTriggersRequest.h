#pragma once

#include "Platform/Values/AtomicPointer.h"
#include "Platform/Values/Value.h"
#include "VantixCore/ConfiguredRequest.h"
#include "VantixCore/VantixNetworkManager.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

namespace VantixConstants::API {
inline constexpr const char* TriggerPath = "/mapp/events";
}  // namespace VantixConstants::API

/// The call of the events API. A GET with a body, on purpose. Usable from any thread.
class InAppTriggersRequest final : public ConfiguredRequest {
public:
    /// Account, base address, pin and access token are those of the configuration, which must not be null. `timeOut` is
    /// in seconds, for the whole call.
    explicit InAppTriggersRequest(std::shared_ptr<ConfigurationGenerator> configuration,
                                  HTTPMethod method = HTTPMethod::get, std::optional<std::string> body = {},
                                  std::optional<HTTPHeaders> header = {}, double timeOut = 60,
                                  bool shouldSendAccessToken = true);
    InAppTriggersRequest(const InAppTriggersRequest& other);
    InAppTriggersRequest& operator=(const InAppTriggersRequest&) = delete;

    /// Gives this request the body and the headers of an event call and sends a copy of it, as
    /// VantixNetworkManager::callAPI does. Of two calls at once each sends its own body, and one of both stays.
    TransferHandle syncTriggers(const Dictionary& body, const std::string& accountId,
                                std::function<void(VantixNetworkManager::Outcome)> completion);

    std::string accountId() const override { return accountId_; }
    HTTPMethod method() const override { return method_; }
    std::string path() const override { return VantixConstants::API::TriggerPath; }
    std::optional<std::string> body() const override { return content_.load()->body; }
    std::optional<HTTPHeaders> header() const override { return content_.load()->header; }
    double timeOut() const override { return timeOut_; }
    bool shouldSendAccessToken() const override { return shouldSendAccessToken_; }

private:
    /// What each sync replaces.
    struct Content {
        std::optional<std::string> body;
        std::optional<HTTPHeaders> header;
    };

    std::string accountId_;
    HTTPMethod method_;
    /// Never null.
    AtomicPointer<const Content> content_;
    double timeOut_;
    bool shouldSendAccessToken_;
    VantixNetworkManager apiManager_;
};

}  // namespace vantix
