#include "CampaignCheck/Rules/Campaign.h"

#include "Platform/Values/JSON.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppCampaign.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"

#include <utility>

namespace vantix {

namespace {

/// What the nested text under the key holds; what cannot be read is noted.
Dictionary nestedObject(Campaign& campaign, const char* key) {
    const Value* value = campaign.push.find(key);
    if (!value || value->isNull()) return {};
    auto parsed = value->text() ? parseJSON(*value->text()) : *value;
    const Dictionary* object = parsed && value->text() ? parsed.value().dictionary() : nullptr;
    if (object) return *object;
    campaign.unreadable.push_back(
        {std::string("/") + key, parsed ? "it holds another kind of value" : parsed.error().localizedDescription});
    return {};
}

}  // namespace

Campaign Campaign::read(std::string file, std::string text) {
    Campaign campaign{std::move(file), CampaignText(std::move(text))};
    auto push = pushOfCampaign(campaign.text.text());
    if (!push) {
        campaign.unreadable.push_back({"", push.error().localizedDescription});
        return campaign;
    }
    campaign.push = std::move(push).value();
    campaign.trigger = nestedObject(campaign, NotificationPayloadKeys::trigger);
    campaign.body = nestedObject(campaign, NotificationPayloadKeys::body);
    campaign.style = nestedObject(campaign, InAppMessagePayloadKeys::templateKey);
    campaign.message =
        std::make_shared<const VantixInAppMessagePayload>(VantixInAppMessagePayload::generate(campaign.push));
    return campaign;
}

}  // namespace vantix
