#pragma once

#include "VantixCore/VantixAPIRequestGenerator.h"
#include "VantixCore/VantixConfiguration.h"

#include <memory>
#include <utility>

namespace vantix {

/// A call whose account, base address, pin and access token are those of a configuration at the time of the call.
class ConfiguredRequest : public VantixAPIRequestGenerator {
public:
    /// The configuration must not be null.
    explicit ConfiguredRequest(std::shared_ptr<ConfigurationGenerator> configuration)
        : configuration_(std::move(configuration)) {}

    std::string accountId() const override { return configuration_->accountID(); }
    std::string baseURL() const override { return configuration_->baseURL(); }
    std::string sslKeyHash() const override { return configuration_->sslKeyHash(); }
    std::string getAccessToken() const override { return configuration_->accessToken(); }

private:
    std::shared_ptr<ConfigurationGenerator> configuration_;
};

}  // namespace vantix
