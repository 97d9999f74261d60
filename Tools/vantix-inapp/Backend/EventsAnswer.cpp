#include "Tools/vantix-inapp/Backend/EventsAnswer.h"

#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Input/Campaign.h"

namespace vantix {

std::string eventsAnswer(const std::string& triggers) {
    auto content = parseJSON(triggers);
    const List* campaigns = content ? content.value().list() : nullptr;
    if (!campaigns) return triggers;

    List pushes;
    for (const Value& campaign : *campaigns) pushes.emplace_back(pushOfCampaignText(toJSON(campaign)));
    return toJSON(Dictionary{{"status", "200"}, {"message", "OK"}, {"triggers", pushes}});
}

}  // namespace vantix
