#pragma once

#include "Platform/Values/Value.h"

#include <string>
#include <string_view>

namespace vantix {

/// The push dictionary that a campaign's text stands for; see pushOfCampaign. Throws BadInput.
Dictionary pushOfCampaignText(std::string_view text);

/// The same for a file that holds nothing but one campaign. Throws BadInput, naming file and line.
Dictionary pushOfCampaignFile(const std::string& file);

}  // namespace vantix
