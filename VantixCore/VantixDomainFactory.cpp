#include "VantixCore/VantixDomainFactory.h"

namespace vantix {

std::string VantixDomainFactory::getDomain(std::string_view name) { return "com.vantix." + std::string(name); }

}  // namespace vantix
