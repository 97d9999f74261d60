#include "VantixCore/VantixCore.h"

#include "VantixCore/DefaultVantixCore.h"
#include "VantixCore/VantixError.h"

namespace vantix {

std::shared_ptr<VantixCore> VantixCore::generate(std::shared_ptr<ConfigurationGenerator> configuration,
                                                 std::optional<Dictionary>, bool, std::optional<Dictionary>,
                                                 std::optional<Dictionary>, Env, LogLevel consoleLogLevel, LogLevel) {
    if (!configuration) throw VantixError(VantixError::Kind::configuration, 0, "There is no configuration");
    VantixLogger::setConsoleLogLevel(consoleLogLevel);
    return std::make_shared<DefaultVantixCore>(std::move(configuration));
}

std::string VantixDomainFactory::getDomain(std::string_view name) { return "com.vantix." + std::string(name); }

}  // namespace vantix
