#include "CampaignCheck/Rules/AnswerQuestions.h"

#include "CampaignCheck/Rules/Wording.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "Platform/Values/CaseFolding.h"
#include "Platform/Values/URLRefusal.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"

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
    for (std::size_t index = 0; index < ctas.size() && found.size() <= mostObjections; ++index) {
        std::optional<Objection> objection = question(ctas[index]);
        if (!objection) continue;
        objection->place = placeOf("/body/ctas", index, key);
        found.push_back(std::move(*objection));
    }
    return found;
}

}  // namespace

Objections unknownActions(const CheckedCampaign& checked) {
    return ofEachButton(checked, "type", [&](const InAppCTA& cta) -> std::optional<Objection> {
        if (ctaActionType(cta.type)) return {};
        return Objection{{},
                         (cta.type.empty() ? "the button has no type" : "type " + quoted(cta.type) + " is unknown") +
                             ": a touch is reported as a close, does nothing, and leaves the message where it is",
                         nearestOrAll(cta.type, wordsOf("/body/ctas/*/type"))};
    });
}

Objections missingAnswerButton(const CheckedCampaign& checked) {
    const InAppBody& body = checked.message().body;
    auto answer = answerOf(body.type);
    if (!answer) return {};
    auto isAnswering = [&](const InAppCTA& cta) { return ctaActionType(cta.type) == answer; };
    if (std::ranges::any_of(body.ctas, isAnswering)) return {};
    // A button of another answer's type, or of none, is the one that was meant.
    auto meant = std::ranges::find_if_not(body.ctas, leadsSomewhere);
    auto index = static_cast<std::size_t>(meant - body.ctas.begin());
    return {{meant == body.ctas.end() ? "/body/ctas" : placeOf("/body/ctas", index, "type"),
             "no button is of type " + quoted(rawValue(*answer)) + ", so that " +
                 (body.type == Type::appRating ? "nothing opens the application's page in the store"
                                               : "what the person answers is never sent"),
             "a button {\"type\": " + quoted(rawValue(*answer)) + ", \"actionText\": …}"}};
}

Objections missingOptions(const CheckedCampaign& checked) {
    const InAppBody& body = checked.message().body;
    if (body.type != Type::feedback || !body.feedback.options.empty()) return {};
    return {
        {"/body/feedbackOptions/options",
         "there are no options that the device can read, and nothing to choose: it reads a list of texts and nothing "
         "else",
         "\"feedbackOptions\": {\"options\": [\"Yes\", \"No\"]}"}};
}

Objections badActionAddresses(const CheckedCampaign& checked) {
    return ofEachButton(checked, "action", [](const InAppCTA& cta) -> std::optional<Objection> {
        if (!leadsSomewhere(cta)) return {};
        auto refusal = refusalToOpen(cta.action);
        if (!refusal) return {};
        std::string what =
            cta.action.empty() ? "the button has no address" : quoted(cta.action) + " is not opened (" + *refusal + ")";
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
    const auto& elements = checked.picture.untouched().elements;
    bool isDrawn = std::ranges::any_of(elements, [](const AccessibleElement& element) {
        return element.role == Role::button && element.label.empty();
    });
    return ofEachButton(checked, "actionText", [&](const InAppCTA& cta) -> std::optional<Objection> {
        if (!cta.actionText.value_or("").empty()) return {};
        return Objection{{},
                         isDrawn ? "the button has no text, and nobody can tell what it does"
                                 : "the button has no text, and is not drawn",
                         "\"actionText\" with a word or two"};
    });
}

Objections wrongActions(const CheckedCampaign& checked) {
    if (applies(InAppMessageObjection::unsupportedType, checked.message())) return {};
    auto answer = answerOf(checked.message().body.type);
    return ofEachButton(checked, "type", [&](const InAppCTA& cta) -> std::optional<Objection> {
        if (!isAnswer(cta) || ctaActionType(cta.type) == answer) return {};
        return Objection{
            {},
            quoted(cta.type) + " in a message of type " + quoted(rawValue(checked.message().body.type)) +
                " sends an answer that nobody was asked for",
            answer ? quoted(rawValue(*answer)) + ", \"EXTERNAL\" or \"DEEPLINK\"" : "\"EXTERNAL\" or \"DEEPLINK\""};
    });
}

Objections unknownSelectionType(const CheckedCampaign& checked) {
    const Dictionary* feedback = checked.campaign.body.dictionary("feedbackOptions");
    const std::string* type = feedback ? feedback->text("selectionType") : nullptr;
    if (!type || inAppFeedbackSelectionType(*type)) return {};
    return {{"/body/feedbackOptions/selectionType",
             quoted(*type) + " is unknown, and the device lets one option be chosen",
             nearestOrAll(*type, wordsOf("/body/feedbackOptions/selectionType"))}};
}

Objections equalOptions(const CheckedCampaign& checked) {
    Objections found;
    std::map<std::string, std::string> seen;
    const auto& options = checked.message().body.feedback.options;
    for (std::size_t index = 0; index < options.size() && found.size() <= mostObjections; ++index) {
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
