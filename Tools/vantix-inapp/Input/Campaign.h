#pragma once

#include "Platform/Values/Value.h"

#include <string>
#include <string_view>

namespace vantix {

/// The push dictionary that a campaign's JSON text stands for: where "trigger", "body" or "template" hold an object
/// instead of a text, the object becomes its JSON text, compact, keys and numbers as written. Nothing else is changed.
/// Throws BadInput for anything but a JSON object.
Dictionary pushOfCampaign(std::string_view text);

/// The same for a file that holds nothing but one campaign. Throws BadInput, naming file and line.
Dictionary pushOfCampaignFile(const std::string& file);

}  // namespace vantix
