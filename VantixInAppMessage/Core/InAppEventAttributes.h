#pragma once

#include "Platform/Values/Value.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// What every reported event carries. Pure; any thread.
Dictionary getAttributesForEventReporting(const VantixInAppMessagePayload& message, bool includeType = false,
                                          std::optional<int> rating = {},
                                          const std::optional<std::string>& feedback = {},
                                          const std::optional<std::vector<int>>& feedbackOptions = {});

}  // namespace vantix
