#pragma once

#include <string>
#include <string_view>

namespace vantix {

/// Names for queues and other process-wide things.
class VantixDomainFactory {
public:
    /// "com.vantix." followed by the name.
    static std::string getDomain(std::string_view name);
};

}  // namespace vantix
