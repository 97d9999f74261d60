#pragma once

#include "Platform/Ports/Application.h"
#include "Platform/Values/Value.h"
#include "Tools/vantix-inapp/Devices.h"
#include "VantixCore/VantixEvents.h"
#include "VantixCore/VantixLogger.h"

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// The surroundings in which the module is started.
struct Configuration {
    Env environment = Env::dev;
    ApplicationState applicationState = ApplicationState::active;
    std::optional<std::string> appStoreId;
    /// Absent: no customer is known.
    std::optional<std::string> customerId = "customer";
    bool appGroup = true;
    bool notificationCore = true;
    bool pushAllowed = true;
    bool scene = true;
    std::string accountId;
    std::string baseURL;
    std::string sslKeyHash;
    std::string accessToken;
    SceneTraits device = deviceNamed("phone").traits;
    LogLevel logLevel = LogLevel::debug;
};

/// Reads the object of a `configure` step. Throws BadInput.
Configuration readConfiguration(const Dictionary& object);

/// "active", "inactive" or "background". Throws BadInput.
ApplicationState applicationStateField(std::string_view key, const Value& value);

}  // namespace vantix
