#pragma once

#include "CampaignCheck/Rules/Rule.h"

namespace vantix {

// Whether the device can read it, and knows its keys.

Objections unreadableTexts(const CheckedCampaign& checked);
Objections unknownKeys(const CheckedCampaign& checked);
Objections wrongKinds(const CheckedCampaign& checked);

}  // namespace vantix
