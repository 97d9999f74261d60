#include "CampaignCheck/Rules/TriggerQuestions.h"

#include "CampaignCheck/Rules/ValidityTime.h"
#include "CampaignCheck/Rules/Wording.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "CampaignCheck/Text/JSONWalk.h"
#include "Platform/Values/CaseFolding.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"

#include <algorithm>
#include <array>

namespace vantix {

namespace {

using TriggerType = VantixInAppNotificationTriggerType;

constexpr std::array triggerTypes{TriggerType::instant, TriggerType::appLaunch};

/// Whether the name is the word of the type, in any letter case.
bool isWord(const std::string& name, TriggerType type) { return foldCase(name) == foldCase(rawValue(type)); }

bool isNumber(const std::string& text) {
    auto value = parseJSON(text);
    return value && (value.value().integer() || value.value().real());
}

}  // namespace

Objections missingScope(const CheckedCampaign& checked) {
    if (!applies(InAppMessageObjection::noScope, checked.message())) return {};
    return {{"/scope", "no text stands under \"scope\", and the device drops a message without a scope",
             "a text of its own for each campaign, such as \"autumn-sale\""}};
}

Objections repeatedScope(const CheckedCampaign& checked) {
    const std::string& scope = checked.message().scope;
    auto same = checked.scopesInUse.find(scope);
    if (scope.empty() || same == checked.scopesInUse.end()) return {};
    return {{"/scope",
             same->second + " has the scope " + quoted(scope) +
                 ", too: when the device has shown either of them, it removes the older one",
             "a scope of its own for each campaign"}};
}

Objections missingTrigger(const CheckedCampaign& checked) {
    if (!applies(InAppMessageObjection::noEventName, checked.message())) return {};
    return {{"/trigger/eventName", "the trigger names no event, and the device drops the message",
             "\"INSTANT\", \"APP_LAUNCH\" or the name of an event of the application"}};
}

Objections triggerInOtherCase(const CheckedCampaign& checked) {
    const NotificationTrigger& trigger = checked.message().trigger;
    auto meant = std::ranges::find_if(triggerTypes, [&](TriggerType type) { return isWord(trigger.eventName, type); });
    if (trigger.type() || meant == triggerTypes.end()) return {};
    bool isDeleted = *meant == TriggerType::appLaunch;
    return {{"/trigger/eventName",
             quoted(trigger.eventName) +
                 " is the name of an event of the application to the device, for letter case counts: the message "
                 "waits for it" +
                 (isDeleted ? ", and the next launch message deletes it" : ""),
             quoted(rawValue(*meant))}};
}

Objections hiddenLaunchWord(const CheckedCampaign& checked) {
    const NotificationTrigger& trigger = checked.message().trigger;
    std::string_view word = rawValue(TriggerType::appLaunch);
    bool isFound = foldCase(trigger.textRepresentation).find(foldCase(word)) != std::string::npos;
    // A launch message in another letter case is a mistake of its own.
    if (!isFound || isWord(trigger.eventName, TriggerType::appLaunch)) return {};
    return {{"/trigger",
             quoted(word) +
                 " stands somewhere in the trigger, in this or another letter case, so that the next launch message "
                 "deletes this one from the device",
             "another name for the event or the attribute"}};
}

Objections numbersAsTexts(const CheckedCampaign& checked) {
    Objections found;
    for (const auto& [key, value] : checked.message().trigger.attributes) {
        if (!value.text() || !isNumber(*value.text())) continue;
        found.push_back({"/trigger/attributes/" + pointerStep(key),
                         quoted(*value.text()) + " is a text, and the number of an event does not equal it: the "
                                                 "message waits for a text",
                         *value.text() + ", without quotation marks"});
    }
    return found;
}

Objections missingCustomer(const CheckedCampaign& checked) {
    if (!checked.message().cuid.empty()) return {};
    return {
        {"/cuid",
         "no text stands under \"cuid\", so that the message is shown at once or never: the device does not read it "
         "back from its store",
         "\"cuid\" with the customer whom it is for"}};
}

Objections otherCustomer(const CheckedCampaign& checked) {
    if (!checked.options.customer) return {};
    const std::string& customer = *checked.options.customer;
    if (!customerObjection(checked.message(), customer)) return {};
    return {{"/cuid",
             "the message is for " + quoted(checked.message().cuid) + ": for " + quoted(customer) +
                 " it is gone at the next launch",
             quoted(customer)}};
}

Objections pastValidity(const CheckedCampaign& checked) {
    auto end = validityTime(checked.message().validity);
    if (!end || *end >= checked.options.now) return {};
    return {{"/validity",
             quoted(checked.message().validity) + " is over, which decides nothing on the device: the "
                                                  "message is shown all the same",
             "a time to come, and no campaign that is over"}};
}

Objections unknownGateway(const CheckedCampaign& checked) {
    const std::string* gateway = checked.campaign.push.text("gateway");
    if (!gateway || notificationGateway(*gateway)) return {};
    return {{"/gateway",
             quoted(*gateway) + " is no gateway that the device knows, it takes " +
                 quoted(rawValue(checked.message().gateway)),
             nearestOrAll(*gateway, wordsOf("/gateway"))}};
}

}  // namespace vantix
