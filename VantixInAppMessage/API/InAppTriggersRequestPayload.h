#pragma once

#include "Platform/Values/UUID.h"
#include "Platform/Values/Value.h"

#include <optional>
#include <string>

namespace vantix {

/// What a caller of a trigger sync knows about it. Nothing of it is sent.
struct InAppTriggersRequestPayload {
    std::string cuID;
    std::string requestID = makeUUID();
    std::optional<Dictionary> systemData = {};

    /// Always empty, on purpose.
    Dictionary generateJSON() const { return {}; }
};

}  // namespace vantix
