#pragma once

#include "CampaignCheck/Rules/Rule.h"

namespace vantix {

// What the device draws of it.

Objections unusedButtons(const CheckedCampaign& checked);
Objections unusedParts(const CheckedCampaign& checked);
Objections missingCardColor(const CheckedCampaign& checked);
Objections weakContrast(const CheckedCampaign& checked);
Objections missingCharacters(const CheckedCampaign& checked);
Objections cutTexts(const CheckedCampaign& checked);
Objections tallerThanTheScreen(const CheckedCampaign& checked);

}  // namespace vantix
