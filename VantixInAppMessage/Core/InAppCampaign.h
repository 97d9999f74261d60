#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Result.h"
#include "Platform/Values/Value.h"

#include <string_view>

namespace vantix {

/// The push dictionary that a campaign's JSON text stands for: where "trigger", "body" or "template" hold an object
/// instead of a text, the object becomes its JSON text, compact, keys and numbers as written. Nothing else is changed.
/// Fails, in words for whoever wrote the campaign, on anything but a JSON object. Pure; any thread.
VANTIX_EXPORT Result<Dictionary> pushOfCampaign(std::string_view text);

}  // namespace vantix
