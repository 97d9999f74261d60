#include "CampaignCheck/CampaignCheck.h"

#include "VantixInAppMessage/Core/InAppMessageObjections.h"

#include <utility>

namespace vantix {

namespace {

std::optional<FetchedImage> fetchedImage(const Campaign& campaign, const CheckOptions& options) {
    auto url = campaign.message->getImageURL();
    bool isFetched = options.fetchImage && url && url->isWebAddress() &&
                     !applies(InAppMessageObjection::insecureBannerImage, *campaign.message);
    return isFetched ? std::optional(options.fetchImage(*url)) : std::nullopt;
}

/// Errors weigh more where the message goes with what is lost.
Severity severityOf(const Rule& rule, const Campaign& campaign) {
    bool isLost = rule.code == "image-lost" && campaign.message->canDeleteInAppMessageWhenImageDownloadingFailed();
    return isLost ? Severity::error : rule.severity;
}

Finding finding(const Rule& rule, const Campaign& campaign, Objection objection) {
    auto mistake = campaign.text.mistakes().find(objection.place);
    bool isMistake = rule.code == "json" && mistake != campaign.text.mistakes().end();
    TextPosition position =
        isMistake ? campaign.text.position(mistake->second) : campaign.text.positionOfValue(objection.place);
    return {campaign.file,
            position.line,
            position.column,
            std::move(objection.place),
            std::string(rule.code),
            severityOf(rule, campaign),
            std::move(objection.message),
            std::move(objection.instead)};
}

void check(const CheckedCampaign& checked, std::vector<Finding>& findings) {
    for (const Rule& rule : campaignRules()) {
        for (Objection& objection : rule.question(checked)) {
            findings.push_back(finding(rule, checked.campaign, std::move(objection)));
        }
        // Of what is no campaign at all there is no more to say.
        if (!checked.campaign.isReadable()) return;
    }
}

}  // namespace

std::vector<Finding> checkCampaigns(const std::vector<CampaignFile>& files, const CheckOptions& options) {
    std::vector<Finding> findings;
    std::vector<Campaign> campaigns;
    campaigns.reserve(files.size());
    for (const CampaignFile& file : files) {
        campaigns.push_back(Campaign::read(file.name, file.text));
        const Campaign& campaign = campaigns.back();
        Picture picture(*campaign.message, options.device);
        check({campaign, picture, std::span(campaigns).first(campaigns.size() - 1), options,
               fetchedImage(campaign, options)},
              findings);
    }
    return findings;
}

}  // namespace vantix
