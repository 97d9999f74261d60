#pragma once

#include "Platform/Values/AtomicPointer.h"
#include "VantixCore/VantixConfiguration.h"

#include <memory>
#include <utility>

namespace vantix {

/// A configuration that may be replaced while it is in use, on any thread. What is sent from then on follows the new
/// one; a single call may still mix both.
class ReplaceableConfiguration final : public ConfigurationGenerator {
public:
    explicit ReplaceableConfiguration(VantixConfiguration configuration) { replace(std::move(configuration)); }

    VantixConfiguration current() const { return *current_.load(); }
    void replace(VantixConfiguration configuration) {
        current_.store(std::make_shared<VantixConfiguration>(std::move(configuration)));
    }

    std::string accountID() const override { return current_.load()->account; }
    std::string baseURL() const override { return current_.load()->base; }
    std::string sslKeyHash() const override { return current_.load()->keyHash; }
    std::string accessToken() const override { return current_.load()->token; }

private:
    AtomicPointer<VantixConfiguration> current_;
};

}  // namespace vantix
