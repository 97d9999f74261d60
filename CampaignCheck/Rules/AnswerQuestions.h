#pragma once

#include "CampaignCheck/Rules/Rule.h"

namespace vantix {

// What can be answered.

Objections unknownActions(const CheckedCampaign& checked);
Objections missingAnswerButton(const CheckedCampaign& checked);
Objections missingOptions(const CheckedCampaign& checked);
Objections badActionAddresses(const CheckedCampaign& checked);
Objections missingStoreId(const CheckedCampaign& checked);
Objections emptyButtons(const CheckedCampaign& checked);
Objections wrongActions(const CheckedCampaign& checked);
Objections unknownSelectionType(const CheckedCampaign& checked);
Objections equalOptions(const CheckedCampaign& checked);

}  // namespace vantix
