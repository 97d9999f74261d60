#pragma once

#include "CampaignCheck/Rules/Rule.h"

namespace vantix {

// The image, once it was fetched.

Objections lostImage(const CheckedCampaign& checked);
Objections largeImage(const CheckedCampaign& checked);
Objections smallImage(const CheckedCampaign& checked);

}  // namespace vantix
