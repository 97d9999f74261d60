#pragma once

#include "Platform/Values/Value.h"
#include "VantixCore/Network/ConfiguredRequest.h"
#include "VantixCore/VantixNetworkManager.h"

#include <memory>
#include <optional>
#include <string>

namespace vantix {

namespace VantixConstants::API {
inline constexpr const char* TriggerPath = "/mapp/events";
}  // namespace VantixConstants::API

/// The call of the events API. A GET with a body, on purpose.
class InAppTriggersRequest final : public ConfiguredRequest {
public:
    /// Account, base address, pin and access token are those of the configuration, which must not be null. `timeOut` is
    /// in seconds, for the whole call.
    explicit InAppTriggersRequest(std::shared_ptr<ConfigurationGenerator> configuration,
                                  HTTPMethod method = HTTPMethod::get, std::optional<std::string> body = {},
                                  std::optional<HTTPHeaders> header = {}, double timeOut = 60,
                                  bool shouldSendAccessToken = true);

    /// Sends a copy of this request that carries the body, and waits for the answer; so not on the main thread. Throws
    /// what VantixNetworkManager::callAPI throws.
    std::optional<VantixResponseGenerator> syncTriggers(const Dictionary& body, const std::string& accountId) const;

    std::string accountId() const override { return accountId_; }
    HTTPMethod method() const override { return method_; }
    std::string path() const override { return VantixConstants::API::TriggerPath; }
    std::optional<std::string> body() const override { return body_; }
    std::optional<HTTPHeaders> header() const override { return header_; }
    double timeOut() const override { return timeOut_; }
    bool shouldSendAccessToken() const override { return shouldSendAccessToken_; }

private:
    std::string accountId_;
    HTTPMethod method_;
    std::optional<std::string> body_;
    std::optional<HTTPHeaders> header_;
    double timeOut_;
    bool shouldSendAccessToken_;
    VantixNetworkManager apiManager_;
};

}  // namespace vantix
