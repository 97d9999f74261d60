#include "VantixCore/VantixCore.h"

#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Reports/DefaultVantixCore.h"
#include "VantixCore/VantixError.h"

namespace vantix {

std::shared_ptr<VantixCore> VantixCore::generate(std::shared_ptr<ConfigurationGenerator> configuration,
                                                 std::optional<Dictionary>, bool, std::optional<Dictionary>,
                                                 std::optional<Dictionary>, Env, LogLevel consoleLogLevel, LogLevel) {
    if (!configuration) throw VantixError(VantixError::Kind::configuration, 0, "There is no configuration");
    VantixLogger::setConsoleLogLevel(consoleLogLevel);
    auto installation = Installation::current();
    return std::make_shared<DefaultVantixCore>(std::move(configuration), installation->host(), installation->reports());
}

}  // namespace vantix
