#include "CampaignCheck/Fields/CampaignField.h"

#include "Platform/Values/WordTable.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageStyle.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageTypes.h"

#include <iterator>

namespace vantix {

namespace {

using Fields = std::vector<CampaignField>;
using Kind = FieldKind;
using Action = CTAActionType;
using Gateway = NotificationGateway;
using Selection = InAppFeedbackSelectionType;
using Trigger = VantixInAppNotificationTriggerType;
using Type = VantixInAppNotificationType;

constexpr WordTable<Kind, 7> kinds{{{Kind::text, "a text"},
                                    {Kind::numberText, "a text that holds a whole number"},
                                    {Kind::color, "a text that names a colour"},
                                    {Kind::object, "an object"},
                                    {Kind::objects, "a list of objects"},
                                    {Kind::texts, "a list of texts"},
                                    {Kind::freeObject, "an object"}}};

// What the cases of the module's enumerations mean to an author.

constexpr WordTable<Type, 7> types{{{Type::popup, "a card in the middle of the screen"},
                                    {Type::footer, "a strip at the lower edge"},
                                    {Type::header, "a strip at the upper edge"},
                                    {Type::fullScreen, "the whole screen"},
                                    {Type::rating, "a card with five stars"},
                                    {Type::feedback, "a card with options to choose from"},
                                    {Type::appRating, "a card that asks for a review in the store"}}};
static_assert(std::size(types.entries) == supportedInAppMessageTypes.size());

constexpr WordTable<Trigger, 2> triggers{
    {{Trigger::instant, "at once"},
     {Trigger::appLaunch, "when the application comes to the foreground; a new one replaces the stored one"}}};

constexpr WordTable<Action, 5> actions{{{Action::external, "leads to an address outside the application"},
                                        {Action::deepLink, "leads to a place in the application"},
                                        {Action::rating, "sends the stars that the person chose"},
                                        {Action::feedback, "sends the options that the person chose"},
                                        {Action::appRating, "opens the application's page in the store"}}};

constexpr WordTable<Selection, 2> selections{
    {{Selection::singleSelection, "one"}, {Selection::multiSelection, "any number"}}};

template <typename Case, std::size_t count>
std::vector<std::string_view> wordsOf(const WordTable<Case, count>& meanings) {
    std::vector<std::string_view> words;
    for (const auto& [value, meaning] : meanings.entries) words.push_back(rawValue(value));
    return words;
}

/// The words in quotation marks.
std::string listed(const std::vector<std::string_view>& words) {
    std::string list;
    for (std::string_view word : words) list += (list.empty() ? "\"" : ", \"") + std::string(word) + "\"";
    return list;
}

/// The sentence, and what each word means.
template <typename Case, std::size_t count>
std::string explained(std::string sentence, const WordTable<Case, count>& meanings) {
    for (const auto& [value, meaning] : meanings.entries) {
        sentence += " \"" + std::string(rawValue(value)) + "\": " + std::string(meaning) + ".";
    }
    return sentence;
}

Fields messageFields() {
    return {
        {.place = "/scope",
         .kind = Kind::text,
         .title = "Scope",
         .description = "The message's identity on the device, one of its own for each campaign. A message with the "
                        "scope of another one replaces or removes it; one without scope is dropped.",
         .isNeeded = true},
        {.place = "/cuid",
         .kind = Kind::text,
         .title = "Customer",
         .description = "Whom the message is for. With anyone else it is gone at the next launch; with nobody named it "
                        "is shown at once or never."},
        {.place = "/campaignId",
         .kind = Kind::text,
         .title = "Campaign",
         .description = "Which campaign this is. The application is told it when the message is shown."},
        {.place = "/variationId",
         .kind = Kind::text,
         .title = "Variation",
         .description = "Which variation of the campaign this is. The device only stores it."},
        {.place = "/senderId",
         .kind = Kind::text,
         .title = "Sender",
         .description = "Who sends the message. Part of every report."},
        {.place = "/senderSource",
         .kind = Kind::text,
         .title = "Sender's source",
         .description = "What made the sender send it. The device only stores it."},
        {.place = "/custom",
         .kind = Kind::text,
         .title = "Custom data",
         .description = "A text of your own. The device only stores it."},
        {.place = "/priority",
         .kind = Kind::text,
         .title = "Priority",
         .description = "How urgent the message is. The device only stores it; it decides nothing there."},
        {.place = "/validity",
         .kind = Kind::text,
         .title = "Validity",
         .description =
             "Until when the message is meant to be shown. The device only stores it; a message that is over "
             "is shown all the same."},
        {.place = "/messageId",
         .kind = Kind::text,
         .title = "Message",
         .description = "Which message this is. Part of every report."},
        {.place = "/gateway",
         .kind = Kind::text,
         .title = "Gateway",
         .description = "The service that brings the push. It decides nothing on the device.",
         .words = {rawValue(Gateway::fcm), rawValue(Gateway::apns)}},
        {.place = "/accountId",
         .kind = Kind::text,
         .title = "Account",
         .description = "Whose campaign this is. It decides nothing on the device."},
        {.place = "/trigger",
         .kind = Kind::object,
         .title = "Trigger",
         .description = "What makes the message appear. Without it the message is dropped.",
         .isNeeded = true},
        {.place = "/body",
         .kind = Kind::object,
         .title = "Body",
         .description =
             "What the message shows. Without it the message is never shown and stands in the way of others.",
         .isNeeded = true},
        {.place = "/template",
         .kind = Kind::object,
         .title = "Template",
         .description = "How the message looks. What is not said here is drawn as usual, on no card."},
    };
}

Fields triggerFields() {
    return {
        {.place = "/trigger/eventName",
         .kind = Kind::text,
         .title = "Event",
         .description = explained("When the message is shown. Letter case counts.", triggers) +
                        " Any other text: when the application captures an event of that name.",
         .words = wordsOf(triggers),
         .takesOtherWords = true,
         .isNeeded = true},
        {.place = "/trigger/attributes",
         .kind = Kind::freeObject,
         .title = "Attributes of the event",
         .description =
             "What the event must carry, too: each of these values must equal the event's own. 1 equals 1.0, "
             "but not \"1\". Such a message is shown again whenever the event comes."},
    };
}

Fields bodyFields() {
    return {
        {.place = "/body/type",
         .kind = Kind::text,
         .title = "Type",
         .description = explained("The kind of message. Letter case counts.", types) +
                        " With any other word the message is never shown and stands in the way of others.",
         .words = wordsOf(types),
         .isNeeded = true},
        {.place = "/body/title",
         .kind = Kind::text,
         .title = "Title",
         .description = "The line above. Shown as it stands, without markup. Leave it out for none."},
        {.place = "/body/message",
         .kind = Kind::text,
         .title = "Message",
         .description = "The text itself. Shown as it stands, without markup; RATING and APPRATING show none. A header "
                        "or footer without it is never shown."},
        {.place = "/body/image",
         .kind = Kind::text,
         .title = "Image",
         .description = "The address of a picture (PNG, JPEG, GIF or WebP), http or https; RATING and APPRATING show "
                        "none. A header or footer takes https only, and is dropped with a picture that cannot be had; "
                        "elsewhere a placeholder stands for it."},
        {.place = "/body/ctas",
         .kind = Kind::objects,
         .title = "Buttons",
         .description = "The calls to action, in their order. RATING, FEEDBACK and APPRATING draw all and need one of "
                        "their own type; the others draw the first, and act as it when the message itself is touched."},
        {.place = "/body/ctas/*/type",
         .kind = Kind::text,
         .title = "What the button does",
         .description = explained("Letter case counts.", actions) +
                        " With any other word a touch does nothing, and is reported as a close.",
         .words = wordsOf(actions),
         .isNeeded = true},
        {.place = "/body/ctas/*/action",
         .kind = Kind::text,
         .title = "Address",
         .description = "Where EXTERNAL and DEEPLINK lead: absolute, with a scheme. Of no use to the others."},
        {.place = "/body/ctas/*/actionText",
         .kind = Kind::text,
         .title = "Text",
         .description = "What stands on the button.",
         .isNeeded = true},
        {.place = "/body/feedbackOptions",
         .kind = Kind::object,
         .title = "Options of a FEEDBACK",
         .description = "What the person may choose from."},
        {.place = "/body/feedbackOptions/selectionType",
         .kind = Kind::text,
         .title = "Selection",
         .description = explained("How many options may be chosen; one unless it is given.", selections),
         .words = wordsOf(selections)},
        {.place = "/body/feedbackOptions/options",
         .kind = Kind::texts,
         .title = "Options",
         .description =
             "The texts to choose from, all different: equal ones are chosen together. A single element that "
             "is no text loses the whole list."},
    };
}

Fields templateFields() {
    return {
        {.place = "/template/phoneBackgroundColor",
         .kind = Kind::color,
         .title = "Behind the card",
         .description = "The colour of the window, usually see-through; clear unless it is given."},
        {.place = "/template/layoutBackgroundColor",
         .kind = Kind::color,
         .title = "Card",
         .description = "The colour of the card, of a FULLSCREEN that of the whole window. Without it the texts stand "
                        "on whatever the application shows."},
        {.place = "/template/title",
         .kind = Kind::object,
         .title = "Style of the title",
         .description = "How the title is written. A FEEDBACK takes its background colour only."},
        {.place = "/template/message",
         .kind = Kind::object,
         .title = "Style of the message",
         .description = "How the message is written. In a FULLSCREEN it stands on the title's background colour."},
        {.place = "/template/ctas",
         .kind = Kind::objects,
         .title = "Styles of the buttons",
         .description = "The first for the first button, and so on; {} for one that is drawn as usual."},
        {.place = "/template/rating",
         .kind = Kind::object,
         .title = "Colours of the stars",
         .description = "How the stars of a RATING are drawn."},
        {.place = "/template/rating/selectedColor",
         .kind = Kind::color,
         .title = "Chosen stars",
         .description = "Yellow unless it is given."},
        {.place = "/template/rating/unselectedColor",
         .kind = Kind::color,
         .title = "Other stars",
         .description = "Grey unless it is given."},
    };
}

Fields textStyleFields(const std::string& container) {
    const std::vector styles{rawValue(TextFontStyle::regular), rawValue(TextFontStyle::bold),
                             rawValue(TextFontStyle::italic)};
    return {
        {.place = container + "/textColor",
         .kind = Kind::color,
         .title = "Colour",
         .description = "Of the text. Unless it is given: black or white, for a button without background a blue, "
                        "whichever can be read."},
        {.place = container + "/backgroundColor",
         .kind = Kind::color,
         .title = "Background",
         .description = "Behind the text, or of the whole button; clear unless it is given."},
        {.place = container + "/textSize",
         .kind = Kind::numberText,
         .title = "Size",
         .description =
             "In points, a whole number as a text: \"17\". 16 unless it is given; \"17px\" and 17 are none."},
        {.place = container + "/textStyle",
         .kind = Kind::text,
         .title = "Style",
         .description = listed(styles) + ", or the exact name of a font on the device.",
         .words = styles,
         .takesOtherWords = true},
    };
}

Fields allFields() {
    Fields all;
    for (const Fields& fields :
         {messageFields(), triggerFields(), bodyFields(), templateFields(), textStyleFields("/template/title"),
          textStyleFields("/template/message"), textStyleFields("/template/ctas/*")}) {
        all.insert(all.end(), fields.begin(), fields.end());
    }
    for (CampaignField& field : all) {
        if (field.kind == Kind::color) field.description += " \"#RRGGBB\", \"#RGB\" or, alpha first, \"#AARRGGBB\".";
    }
    return all;
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
