#pragma once

#include "Platform/Ports/Application.h"
#include "Tools/vantix-inapp/Headless/Devices.h"
#include "VantixCore/VantixEvents.h"
#include "VantixCore/VantixLogger.h"

#include <optional>
#include <string>

namespace vantix {

/// The surroundings in which the module is started, and what is told of it.
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
    /// Whether a printed report holds its attributes.
    bool reportAttributes = true;
};

}  // namespace vantix
