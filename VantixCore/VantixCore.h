#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Value.h"
#include "VantixCore/VantixConfiguration.h"
#include "VantixCore/VantixEvents.h"
#include "VantixCore/VantixLogger.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace vantix {

/// Reports events and carries out calls to action. Usable from any thread.
class VANTIX_EXPORT VantixCore {
public:
    virtual ~VantixCore() = default;

    /// Throws VantixError (`configuration`) when there is no configuration. `geoData`, `deviceScreenInfo` and
    /// `inboxCoreConfig` are for libraries beside this one and are ignored here. `consoleLogLevel` becomes the
    /// log's level; VantixLogger::setConsoleLogLevel may change it afterwards.
    static std::shared_ptr<VantixCore> generate(std::shared_ptr<ConfigurationGenerator> configuration,
                                                std::optional<Dictionary> geoData, bool supportsPushNotifications,
                                                std::optional<Dictionary> deviceScreenInfo,
                                                std::optional<Dictionary> inboxCoreConfig, Env configuredFor,
                                                LogLevel consoleLogLevel = LogLevel::debug,
                                                LogLevel remoteLogLevel = LogLevel::none);

    /// Keeps the report in the data directory, where it waits for the back end, before it returns; so it waits for the
    /// disk and does not belong on the main thread. The completion, if any, learns whether the report was kept, on the
    /// calling thread.
    virtual void reportDLREvent(VantixDLREvents dlrEventType, const Dictionary& customAttributes,
                                std::function<void(bool)> completion = {}) = 0;
    /// Likewise.
    virtual void reportBehavioralEvent(std::string_view name, const Dictionary& customAttributes) = 0;

    /// Follows the call to action of a message: an external one opens its URL, a deep link goes to the host's handler,
    /// any other type is only told to the host's observer. VantixHost says what is refused, which is an error in the
    /// log. The payload is the message's dictionary form.
    virtual void performCTAAction(const CTA& cta, const Dictionary& notificationPayload) = 0;
    /// Opens a URL outside the application, unless it is refused, as VantixHost says. An empty text is no URL and is
    /// ignored.
    virtual void openExternal(const std::string& url) = 0;
};

}  // namespace vantix
