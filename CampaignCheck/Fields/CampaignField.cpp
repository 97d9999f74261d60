#include "CampaignCheck/Fields/CampaignField.h"

#include "Platform/Values/WordTable.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageTypes.h"

#include <algorithm>

namespace vantix {

namespace {

using Kind = FieldKind;
using ActionType = CTAActionType;
using SelectionType = InAppFeedbackSelectionType;

constexpr WordTable<Kind, 7> kinds{{{Kind::text, "a text"},
                                    {Kind::numberText, "a text that holds a whole number"},
                                    {Kind::color, "a text that names a color"},
                                    {Kind::object, "an object"},
                                    {Kind::objects, "a list of objects"},
                                    {Kind::texts, "a list of texts"},
                                    {Kind::freeObject, "an object"}}};

std::vector<std::string_view> typesThatAreShown() {
    std::vector<std::string_view> words;
    for (VantixInAppNotificationType type : supportedInAppMessageTypes) words.push_back(rawValue(type));
    return words;
}

std::vector<std::string_view> actionTypes() {
    std::vector<std::string_view> words;
    for (ActionType type : {ActionType::external, ActionType::deepLink, ActionType::rating, ActionType::feedback,
                            ActionType::appRating}) {
        words.push_back(rawValue(type));
    }
    return words;
}

std::vector<CampaignField> makeFields() {
    return {
        {"/scope",
         Kind::text,
         "Scope",
         "The message's identity on the device. A message with the scope of another one replaces or removes it.",
         {},
         true},
        {"/cuid", Kind::text, "Customer",
         "The customer that the message is for. For anyone else it is gone at the next launch."},
        {"/campaignId", Kind::text, "Campaign",
         "Stored with the message and told to the application when it is shown."},
        {"/variationId", Kind::text, "Variation", "Stored with the message."},
        {"/senderId", Kind::text, "Sender", "Part of every report."},
        {"/senderSource", Kind::text, "Sender's source", "Stored with the message."},
        {"/custom", Kind::text, "Custom data", "Stored with the message."},
        {"/priority", Kind::text, "Priority", "Stored with the message. It decides nothing on the device."},
        {"/validity", Kind::text, "Validity", "Stored with the message. It decides nothing on the device."},
        {"/messageId", Kind::text, "Message", "Part of every report."},
        {"/gateway",
         Kind::text,
         "Gateway",
         "The service that brings the push. It decides nothing on the device.",
         {rawValue(NotificationGateway::fcm), rawValue(NotificationGateway::apns)}},
        {"/accountId", Kind::text, "Account", "It decides nothing on the device."},
        {"/trigger", Kind::object, "Trigger", "What makes the message appear.", {}, true},
        {"/trigger/eventName",
         Kind::text,
         "Event",
         "\"INSTANT\": shown at once. \"APP_LAUNCH\": shown when the application comes to the foreground; a new one "
         "replaces the stored one. Anything else is the name of an event that the application captures.",
         {},
         true},
        {"/trigger/attributes", Kind::freeObject, "Attributes of the event",
         "Each of these values must equal the event's own; 1 equals 1.0, but not \"1\"."},
        {"/body", Kind::object, "Body", "What the message shows.", {}, true},
        {"/body/type", Kind::text, "Type", "The kind of message.", typesThatAreShown(), true},
        {"/body/title", Kind::text, "Title", "Shown as it stands. Without it there is none."},
        {"/body/message", Kind::text, "Message", "Shown as it stands. A header or footer without it is never shown."},
        {"/body/image", Kind::text, "Image",
         "The address of a picture (PNG, JPEG, GIF, WebP), http or https; of a header or footer https only."},
        {"/body/ctas", Kind::objects, "Buttons", "The calls to action, in their order."},
        {"/body/ctas/*/type", Kind::text, "What the button does",
         "\"EXTERNAL\" leads out, \"DEEPLINK\" into the application, \"RATING\" and \"FEEDBACK\" send the answer, "
         "\"APPRATING\" opens the application's page in the store.",
         actionTypes(), true},
        {"/body/ctas/*/action", Kind::text, "Address", "Where EXTERNAL and DEEPLINK lead: absolute, with a scheme."},
        {"/body/ctas/*/actionText", Kind::text, "Text", "What stands on the button."},
        {"/body/feedbackOptions", Kind::object, "Options", "What the person may choose in a FEEDBACK message."},
        {"/body/feedbackOptions/selectionType",
         Kind::text,
         "Selection",
         "How many options may be chosen.",
         {rawValue(SelectionType::singleSelection), rawValue(SelectionType::multiSelection)}},
        {"/body/feedbackOptions/options", Kind::texts, "Options", "The texts to choose from, all different."},
        {"/template", Kind::object, "Template", "How the message looks."},
        {"/template/phoneBackgroundColor", Kind::color, "Behind the card", "The colour of the whole window."},
        {"/template/layoutBackgroundColor", Kind::color, "Card",
         "The colour of the card; of the whole window for a full screen. Without it the texts stand on the "
         "application."},
        {"/template/title", Kind::object, "Style of the title", ""},
        {"/template/message", Kind::object, "Style of the message", ""},
        {"/template/ctas", Kind::objects, "Styles of the buttons", "The first for the first button, and so on."},
        {"/template/rating", Kind::object, "Colours of the stars", ""},
        {"/template/rating/selectedColor", Kind::color, "Selected stars", "Yellow unless it is given."},
        {"/template/rating/unselectedColor", Kind::color, "Other stars", "Grey unless it is given."},
    };
}

/// The style of one text, three times.
void addTextStyle(std::vector<CampaignField>& fields, std::string_view textColor, std::string_view backgroundColor,
                  std::string_view textSize, std::string_view textStyle) {
    fields.push_back({textColor, Kind::color, "Color", "Black, white or a blue that can be read unless it is given."});
    fields.push_back({backgroundColor, Kind::color, "Background", "Behind the text, or of the button; else clear."});
    fields.push_back({textSize, Kind::numberText, "Size", "Whole points, as a text: \"17\". 16 unless it is given."});
    fields.push_back({textStyle, Kind::text, "Style",
                      "\"REGULAR\", \"BOLD\", \"ITALIC\", or the exact name of a font on the device."});
}

std::vector<CampaignField> allFields() {
    auto fields = makeFields();
    addTextStyle(fields, "/template/title/textColor", "/template/title/backgroundColor", "/template/title/textSize",
                 "/template/title/textStyle");
    addTextStyle(fields, "/template/message/textColor", "/template/message/backgroundColor",
                 "/template/message/textSize", "/template/message/textStyle");
    addTextStyle(fields, "/template/ctas/*/textColor", "/template/ctas/*/backgroundColor", "/template/ctas/*/textSize",
                 "/template/ctas/*/textStyle");
    return fields;
}

}  // namespace

std::span<const CampaignField> campaignFields() {
    static const auto& fields = *new const auto(allFields());
    return fields;
}

std::vector<const CampaignField*> fieldsIn(std::string_view container) {
    std::vector<const CampaignField*> found;
    for (const CampaignField& field : campaignFields()) {
        if (field.container() == container) found.push_back(&field);
    }
    return found;
}

std::string_view inWords(FieldKind kind) { return kinds.word(kind); }

}  // namespace vantix
