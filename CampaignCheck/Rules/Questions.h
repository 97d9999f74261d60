#pragma once

#include "CampaignCheck/Rules/Rule.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// What rules look for; each stands behind one rule of the table.
using Objections = std::vector<Objection>;

// Whether the device can read it, and knows its keys.
Objections unreadableTexts(const CheckedCampaign& checked);
Objections unknownKeys(const CheckedCampaign& checked);
Objections wrongKinds(const CheckedCampaign& checked);

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

// What it says.
Objections unknownType(const CheckedCampaign& checked);
Objections insecureBannerImage(const CheckedCampaign& checked);
Objections bannerWithoutMessage(const CheckedCampaign& checked);
Objections badImageAddress(const CheckedCampaign& checked);
Objections blankTexts(const CheckedCampaign& checked);
Objections markupInTexts(const CheckedCampaign& checked);

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

// How it is styled.
Objections badColors(const CheckedCampaign& checked);
Objections alphaInOtherOrder(const CheckedCampaign& checked);
Objections badTextSizes(const CheckedCampaign& checked);
Objections unknownTextStyles(const CheckedCampaign& checked);
Objections buttonStyleCount(const CheckedCampaign& checked);

// What the device draws of it.
Objections unusedButtons(const CheckedCampaign& checked);
Objections unusedParts(const CheckedCampaign& checked);
Objections missingCardColor(const CheckedCampaign& checked);
Objections weakContrast(const CheckedCampaign& checked);
Objections missingCharacters(const CheckedCampaign& checked);
Objections cutTexts(const CheckedCampaign& checked);
Objections tallerThanTheScreen(const CheckedCampaign& checked);

// The image, once it was fetched.
Objections lostImage(const CheckedCampaign& checked);
Objections largeImage(const CheckedCampaign& checked);
Objections smallImage(const CheckedCampaign& checked);

}  // namespace vantix
