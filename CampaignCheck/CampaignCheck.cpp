#include "CampaignCheck/CampaignCheck.h"

#include "CampaignCheck/Rules/RuleTable.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace vantix {

namespace {

/// A finding, and whether it tells anything that no other one does.
struct Found {
    const Rule* rule;
    Finding finding;
    bool isTold = true;
};

std::optional<FetchedImage> fetchedImage(const Campaign& campaign, const Picture& picture,
                                         const CheckOptions& options) {
    auto url = campaign.message->getImageURL();
    bool isDrawn = picture.untouched().element({Role::image, 0});
    bool isFetched = options.fetchImage && isDrawn && url && url->isWebAddress() &&
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
    TextPosition position = isMistake                    ? campaign.text.position(mistake->second)
                            : rule.code == "unknown-key" ? campaign.text.positionOfKey(objection.place)
                                                         : campaign.text.positionOfValue(objection.place);
    return {campaign.file,
            position.line,
            position.column,
            std::move(objection.place),
            std::string(rule.code),
            severityOf(rule, campaign),
            std::move(objection.message),
            std::move(objection.instead)};
}

/// The last finding of a rule that finds too much says that there are more.
void limit(Objections& objections) {
    if (objections.size() <= mostObjections) return;
    objections.resize(mostObjections);
    objections.back().message += ", as others in this file do";
}

std::vector<Found> ask(const CheckedCampaign& checked) {
    std::vector<Found> found;
    for (const Rule& rule : campaignRules()) {
        Objections objections = rule.question(checked);
        limit(objections);
        for (Objection& objection : objections) {
            found.push_back({&rule, finding(rule, checked.campaign, std::move(objection))});
        }
        // Of what is no campaign at all there is no more to say.
        if (!checked.campaign.isReadable()) break;
    }
    return found;
}

/// Of a mistake and what follows from it the graver one is told, of equals the mistake itself.
void passOverConsequences(std::vector<Found>& found) {
    std::map<std::string, Found*> mistakes;
    for (Found& each : found) {
        if (each.rule->explains) mistakes.emplace(each.finding.place, &each);
    }
    for (Found& each : found) {
        std::string place = each.finding.place;
        auto mistake = mistakes.find(place);
        while (mistake == mistakes.end() && !place.empty()) {
            place.resize(place.rfind('/'));
            mistake = mistakes.find(place);
        }
        if (mistake == mistakes.end() || mistake->second == &each) continue;
        bool isGraver =
            each.finding.severity == Severity::error && mistake->second->finding.severity == Severity::warning;
        (isGraver ? *mistake->second : each).isTold = false;
    }
}

}  // namespace

std::vector<Finding> CampaignChecker::check(const CampaignFile& file, const CheckOptions& options) {
    Campaign campaign = Campaign::read(file.name, file.text);
    Picture picture(*campaign.message, options.device);
    auto found = ask({campaign, picture, scopesInUse_, options, fetchedImage(campaign, picture, options)});
    scopesInUse_.emplace(campaign.message->scope, file.name);

    passOverConsequences(found);
    std::vector<Finding> findings;
    for (Found& each : found) {
        if (each.isTold) findings.push_back(std::move(each.finding));
    }
    return findings;
}

std::vector<Finding> checkCampaigns(const std::vector<CampaignFile>& files, const CheckOptions& options) {
    CampaignChecker checker;
    std::vector<Finding> findings;
    for (const CampaignFile& file : files)
        std::ranges::move(checker.check(file, options), std::back_inserter(findings));
    return findings;
}

}  // namespace vantix
