#include "CampaignCheck/Fields/CampaignField.h"
#include "CampaignCheck/Fields/NearestWord.h"
#include "CampaignCheck/Rules/Questions.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "Platform/Values/CaseFolding.h"
#include "Platform/Values/URL.h"
#include "VantixCore/VantixEvents.h"

#include <algorithm>
#include <map>
#include <optional>

namespace vantix {

namespace {

using Type = VantixInAppNotificationType;

/// The call to action by which a message of this type takes its answer.
std::optional<CTAActionType> answerOf(Type type) {
    if (type == Type::rating) return CTAActionType::rating;
    if (type == Type::feedback) return CTAActionType::feedback;
    if (type == Type::appRating) return CTAActionType::appRating;
    return {};
}

bool isAnswer(const InAppCTA& cta) {
    auto type = ctaActionType(cta.type);
    return type == CTAActionType::rating || type == CTAActionType::feedback || type == CTAActionType::appRating;
}

bool leadsSomewhere(const InAppCTA& cta) {
    auto type = ctaActionType(cta.type);
    return type == CTAActionType::external || type == CTAActionType::deepLink;
}

/// Asks a question of each button.
template <typename Question>
Objections ofEachButton(const CheckedCampaign& checked, const char* key, Question question) {
    Objections found;
    const auto& ctas = checked.message().body.ctas;
    for (std::size_t index = 0; index < ctas.size(); ++index) {
        std::optional<Objection> objection = question(ctas[index]);
        if (!objection) continue;
        objection->place = placeOf("/body/ctas", index, key);
        found.push_back(std::move(*objection));
    }
    return found;
}

std::vector<std::string_view> actionWords() {
    for (const CampaignField* field : fieldsIn("/body/ctas/*")) {
        if (field->key() == "type") return field->words;
    }
    return {};
}

std::string inQuotes(std::string_view word) { return "\"" + std::string(word) + "\""; }

}  // namespace

Objections unknownActions(const CheckedCampaign& checked) {
    return ofEachButton(checked, "type", [&](const InAppCTA& cta) -> std::optional<Objection> {
        if (ctaActionType(cta.type)) return {};
        auto nearest = nearestWord(cta.type, actionWords());
        return Objection{{},
                         (cta.type.empty() ? "the button has no type" : "type " + quoted(cta.type) + " is unknown") +
                             ": a touch is reported as a close, does nothing, and leaves the message where it is",
                         nearest.empty() ? "\"EXTERNAL\", \"DEEPLINK\", or no button: every message can be closed"
                                         : inQuotes(nearest)};
    });
}

Objections missingAnswerButton(const CheckedCampaign& checked) {
    const InAppBody& body = checked.message().body;
    auto answer = answerOf(body.type);
    if (!answer) return {};
    bool isThere = std::any_of(body.ctas.begin(), body.ctas.end(),
                               [&](const InAppCTA& cta) { return ctaActionType(cta.type) == answer; });
    if (isThere) return {};
    return {{"/body/ctas",
             "no button is of type " + inQuotes(rawValue(*answer)) + ", so that what the person answers is never sent",
             "a button {\"type\": " + inQuotes(rawValue(*answer)) + ", \"actionText\": …}"}};
}

Objections missingOptions(const CheckedCampaign& checked) {
    const InAppBody& body = checked.message().body;
    if (body.type != Type::feedback || !body.feedback.options.empty()) return {};
    return {{"/body/feedbackOptions/options", "there are no options that the device can read, and nothing to choose",
             "a list of texts: {\"feedbackOptions\": {\"options\": [\"Yes\", \"No\"]}}"}};
}

Objections badActionAddresses(const CheckedCampaign& checked) {
    return ofEachButton(checked, "action", [](const InAppCTA& cta) -> std::optional<Objection> {
        if (!leadsSomewhere(cta)) return {};
        auto url = URL::parse(cta.action);
        if (url && !url->scheme().empty()) return {};
        std::string what = cta.action.empty() ? "the button has no address" : quoted(cta.action) + " has no scheme";
        if (!url && !cta.action.empty()) what = quoted(cta.action) + " is no address";
        return Objection{{},
                         what + ": a touch takes the message away and leads nowhere",
                         ctaActionType(cta.type) == CTAActionType::external ? "an address such as https://example.com/"
                                                                            : "an address such as shop://sale"};
    });
}

Objections missingStoreId(const CheckedCampaign& checked) {
    bool isMissing = checked.options.storeId && checked.options.storeId->empty();
    if (!isMissing || checked.message().body.type != Type::appRating) return {};
    return {{"/body/type",
             "the application has no identity in the store: a touch on the button opens no page and the "
             "message goes",
             "the application's identity, given when the module is configured"}};
}

Objections emptyButtons(const CheckedCampaign& checked) {
    return ofEachButton(checked, "actionText", [&](const InAppCTA& cta) -> std::optional<Objection> {
        if (!cta.actionText.value_or("").empty()) return {};
        return Objection{{}, "the button has no text, and is drawn without one or not at all", "a word or two"};
    });
}

Objections wrongActions(const CheckedCampaign& checked) {
    auto answer = answerOf(checked.message().body.type);
    return ofEachButton(checked, "type", [&](const InAppCTA& cta) -> std::optional<Objection> {
        if (!isAnswer(cta) || ctaActionType(cta.type) == answer) return {};
        return Objection{{},
                         inQuotes(cta.type) + " in a message of type " +
                             inQuotes(rawValue(checked.message().body.type)) +
                             " sends an answer that nobody was asked for",
                         answer ? inQuotes(rawValue(*answer)) : "\"EXTERNAL\" or \"DEEPLINK\""};
    });
}

Objections unknownSelectionType(const CheckedCampaign& checked) {
    const Dictionary* feedback = checked.campaign.body.dictionary("feedbackOptions");
    const std::string* type = feedback ? feedback->text("selectionType") : nullptr;
    if (!type || inAppFeedbackSelectionType(*type)) return {};
    auto nearest = nearestWord(*type, {"singleSelection", "multiSelection"});
    return {{"/body/feedbackOptions/selectionType",
             quoted(*type) + " is unknown, and the device lets one option be chosen",
             nearest.empty() ? "\"singleSelection\" or \"multiSelection\"" : inQuotes(nearest)}};
}

Objections equalOptions(const CheckedCampaign& checked) {
    Objections found;
    std::map<std::string, std::string> seen;
    const auto& options = checked.message().body.feedback.options;
    for (std::size_t index = 0; index < options.size(); ++index) {
        auto [first, isNew] = seen.emplace(foldCase(options[index]), options[index]);
        if (isNew) continue;
        found.push_back({placeOf("/body/feedbackOptions/options", index),
                         quoted(options[index]) + " equals " + quoted(first->second) +
                             ", but for letter case: a choice of one is reported as a choice of both",
                         "options that are different words"});
    }
    return found;
}

}  // namespace vantix
