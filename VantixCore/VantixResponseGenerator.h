#pragma once

#include "Platform/Values/Export.h"
#include "VantixCore/VantixError.h"

#include <optional>
#include <string>

namespace vantix {

/// The answer to a call of the back end, whoever brings it.
class VANTIX_EXPORT VantixResponseGenerator {
public:
    virtual ~VantixResponseGenerator() = default;

    /// The bytes of the answer; absent when it has none.
    virtual const std::optional<std::string>& rcvdData() const = 0;
    /// What went wrong, if anything did; the data may be there all the same.
    virtual const std::optional<VantixError>& error() const = 0;
};

}  // namespace vantix
