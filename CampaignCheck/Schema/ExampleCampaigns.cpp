#include "CampaignCheck/Schema/ExampleCampaigns.h"

#include "Platform/Values/FatalError.h"
#include "Platform/Values/JSON.h"

#include <string>
#include <string_view>
#include <utility>

namespace vantix {

/// The text of a file; null for one that is not there.
const std::string* embeddedCampaign(std::string_view fileName);

namespace {

constexpr std::string_view names[] = {
    "popup",
    "full-screen",
    "header",
    "footer",
    "rating",
    "feedback",
    "app-rating",
    "popup-with-image",
    "popup-image-only",
    "popup-dark",
    "popup-right-to-left",
    "popup-as-texts",
    "full-screen-with-image",
    "header-with-image",
    "footer-text-only",
    "rating-two-buttons",
    "feedback-one-choice",
    "app-rating-two-buttons",
};

Value campaignNamed(std::string_view name) {
    const std::string* text = embeddedCampaign(std::string(name) + ".json");
    auto campaign = text ? parseJSON(*text) : Result<Value>(Error{"it is not there"});
    if (!campaign)
        fatalError("The example campaign " + std::string(name) + ": " + campaign.error().localizedDescription);
    return std::move(campaign).value();
}

}  // namespace

List exampleCampaigns() {
    List campaigns;
    for (std::string_view name : names) campaigns.push_back(campaignNamed(name));
    return campaigns;
}

}  // namespace vantix
