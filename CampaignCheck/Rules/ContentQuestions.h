#pragma once

#include "CampaignCheck/Rules/Rule.h"

namespace vantix {

// What it says.

Objections unknownType(const CheckedCampaign& checked);
Objections insecureBannerImage(const CheckedCampaign& checked);
Objections bannerWithoutMessage(const CheckedCampaign& checked);
Objections badImageAddress(const CheckedCampaign& checked);
Objections blankTexts(const CheckedCampaign& checked);
Objections markupInTexts(const CheckedCampaign& checked);

}  // namespace vantix
