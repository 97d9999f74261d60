#pragma once

#include "CampaignCheck/Rules/Rule.h"

namespace vantix {

// Who gets it, and when.

Objections missingScope(const CheckedCampaign& checked);
Objections repeatedScope(const CheckedCampaign& checked);
Objections missingTrigger(const CheckedCampaign& checked);
Objections triggerInOtherCase(const CheckedCampaign& checked);
Objections hiddenLaunchWord(const CheckedCampaign& checked);
Objections numbersAsTexts(const CheckedCampaign& checked);
Objections missingCustomer(const CheckedCampaign& checked);
Objections otherCustomer(const CheckedCampaign& checked);
Objections pastValidity(const CheckedCampaign& checked);
Objections unknownGateway(const CheckedCampaign& checked);

}  // namespace vantix
