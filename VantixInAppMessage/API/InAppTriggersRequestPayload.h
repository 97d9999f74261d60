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

    /// Adds what is sent: nothing, on purpose.
    void encode(Dictionary&) const {}
    /// What is sent, as a dictionary of its own; so always empty.
    Dictionary generateJSON() const {
        Dictionary json;
        encode(json);
        return json;
    }
};

}  // namespace vantix
