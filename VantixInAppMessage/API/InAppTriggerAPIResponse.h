#pragma once

#include "Platform/Values/Value.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// The decoded answer of the events API.
struct InAppTriggerAPIResponse {
    std::optional<std::string> message;
    /// A number as text ("200"). A number itself does not count.
    std::optional<std::string> status;
    std::optional<std::vector<VantixInAppMessagePayload>> triggers;

    bool operator==(const InAppTriggerAPIResponse&) const = default;

    /// Never fails: what is missing or of a wrong kind is absent. A list of triggers is taken whole or not at all.
    static InAppTriggerAPIResponse generate(const Dictionary& answer);
};

}  // namespace vantix
