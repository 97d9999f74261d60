#pragma once

#include "Platform/Values/Export.h"

#include <optional>
#include <string>

namespace vantix {

/// The settings that an app group shares: read from memory, written through to the data directory. Usable from any
/// thread.
class VANTIX_EXPORT SharedUserDefaults {
public:
    virtual ~SharedUserDefaults() = default;

    virtual std::optional<std::string> customerId() const = 0;
    /// Absent: no customer is known.
    virtual void setCustomerId(std::optional<std::string> customerId) = 0;
};

}  // namespace vantix
