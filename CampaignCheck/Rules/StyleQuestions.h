#pragma once

#include "CampaignCheck/Rules/Rule.h"

namespace vantix {

// How it is styled.

Objections badColors(const CheckedCampaign& checked);
Objections alphaInOtherOrder(const CheckedCampaign& checked);
Objections badTextSizes(const CheckedCampaign& checked);
Objections unknownTextStyles(const CheckedCampaign& checked);
Objections buttonStyleCount(const CheckedCampaign& checked);

}  // namespace vantix
