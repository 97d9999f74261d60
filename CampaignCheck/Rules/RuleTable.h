#pragma once

#include "CampaignCheck/Rules/Rule.h"

#include <span>

namespace vantix {

/// All rules, in the order in which their findings are told.
std::span<const Rule> campaignRules();

}  // namespace vantix
