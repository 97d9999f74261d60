#include "VantixInAppMessage/Core/InAppMessagePayload/InAppBody.h"

#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/NestedJSON.h"

namespace vantix {

namespace {

constexpr LogSource log{"Core/InAppMessagePayload/VantixInAppMessagePayload"};

/// The calls to action of a body; whoever draws them relies on their texts.
std::vector<InAppCTA> ctasWithTexts(const List* list) {
    auto ctas = InAppCTA::generate(list ? dictionaries(*list) : std::nullopt);
    for (InAppCTA& cta : ctas) {
        if (!cta.actionText) cta.actionText = "";
    }
    return ctas;
}

}  // namespace

std::vector<InAppCTA> InAppCTA::generate(const std::optional<std::vector<Dictionary>>& dictionaries) {
    if (!dictionaries) {
        log.error("generate(from:)", "CTA data not available due to invalid json response");
        return {};
    }
    std::vector<InAppCTA> ctas;
    for (const Dictionary& dictionary : *dictionaries) {
        InAppCTA& cta = ctas.emplace_back();
        readText(dictionary, NotificationPayloadKeys::type, cta.type);
        readText(dictionary, NotificationPayloadKeys::action, cta.action);
        readText(dictionary, NotificationPayloadKeys::actionText, cta.actionText);
    }
    return ctas;
}

List InAppCTA::getJSON(const std::vector<InAppCTA>& ctas) {
    List list;
    for (const InAppCTA& cta : ctas) {
        Dictionary dictionary{{NotificationPayloadKeys::type, cta.type}};
        if (cta.actionText) dictionary.set(NotificationPayloadKeys::actionText, *cta.actionText);
        dictionary.set(NotificationPayloadKeys::action, cta.action);
        list.emplace_back(dictionary);
    }
    return list;
}

Dictionary InAppCTA::description() const {
    return {{"actionText", orNull(actionText)}, {"action", action}, {"type", type}};
}

CTA InAppCTA::generateCTA() const { return {actionText, action, type}; }

InAppFeedback InAppFeedback::generate(const Dictionary& dictionary) {
    InAppFeedback feedback;
    if (auto word = dictionary.text(InAppMessagePayloadKeys::selectionType)) {
        feedback.selectionType = inAppFeedbackSelectionType(*word).value_or(feedback.selectionType);
    }
    if (auto list = dictionary.list(InAppMessagePayloadKeys::options)) {
        feedback.options = texts(*list).value_or(feedback.options);
    }
    return feedback;
}

Dictionary InAppFeedback::getJSON() const {
    return {{InAppMessagePayloadKeys::selectionType, std::string(rawValue(selectionType))},
            {InAppMessagePayloadKeys::options, List(options.begin(), options.end())}};
}

InAppBody InAppBody::generate(const std::string& text) {
    auto dictionary = dictionaryFromText(text, "body not available due to invalid json response",
                                         "error occurred during json generation for Body:", log);
    if (!dictionary) return {};

    InAppBody body;
    body.textRepresentation = text;
    if (auto word = dictionary->text(NotificationPayloadKeys::type)) {
        body.type = inAppNotificationType(*word).value_or(body.type);
    }
    readText(*dictionary, NotificationPayloadKeys::title, body.title);
    readText(*dictionary, NotificationPayloadKeys::message, body.message);
    readText(*dictionary, NotificationPayloadKeys::image, body.image);
    body.ctas = ctasWithTexts(dictionary->list(NotificationPayloadKeys::ctas));
    if (auto feedback = dictionary->dictionary(InAppMessagePayloadKeys::feedbackOptions)) {
        body.feedback = InAppFeedback::generate(*feedback);
    }
    return body;
}

Dictionary InAppBody::getJSON() const {
    return {{NotificationPayloadKeys::type, std::string(rawValue(type))},
            {NotificationPayloadKeys::title, title},
            {NotificationPayloadKeys::message, message},
            {NotificationPayloadKeys::image, image},
            {NotificationPayloadKeys::ctas, InAppCTA::getJSON(ctas)},
            {InAppMessagePayloadKeys::feedbackOptions, feedback.getJSON()}};
}

bool InAppBody::isBanner() const {
    return type == VantixInAppNotificationType::header || type == VantixInAppNotificationType::footer;
}

Dictionary InAppBody::description() const {
    List describedCTAs;
    for (const InAppCTA& cta : ctas) describedCTAs.emplace_back(cta.description());
    return {{"textRepresentation", textRepresentation},
            {"type", std::string(rawValue(type))},
            {"title", title},
            {"message", message},
            {"image", image},
            {"ctas", describedCTAs},
            {"feedback", feedback.getJSON()}};
}

}  // namespace vantix
