#include "CampaignCheck/Rules/RuleTable.h"

#include "CampaignCheck/Rules/AnswerQuestions.h"
#include "CampaignCheck/Rules/ContentQuestions.h"
#include "CampaignCheck/Rules/ImageQuestions.h"
#include "CampaignCheck/Rules/PictureQuestions.h"
#include "CampaignCheck/Rules/StructureQuestions.h"
#include "CampaignCheck/Rules/StyleQuestions.h"
#include "CampaignCheck/Rules/TriggerQuestions.h"

namespace vantix {

namespace {

constexpr auto error = Severity::error;
constexpr auto warning = Severity::warning;
constexpr bool explains = true;

constexpr Rule rules[] = {
    {"json", error, "the file, or a nested text, is no JSON object", unreadableTexts, explains},
    {"no-scope", error, "no scope, or an empty one", missingScope},
    {"no-trigger", error, "no trigger event name, or an empty one", missingTrigger},
    {"unknown-type", error,
     "the body's type is none of the seven words (the message becomes a badge, is never shown and stands in the way "
     "of others)",
     unknownType},
    {"banner-image", error, "a header or footer whose image is not https", insecureBannerImage},
    {"banner-empty", error, "a header or footer without message", bannerWithoutMessage},
    {"unknown-action", error, "a call to action of a type that the device does not act on", unknownActions, explains},
    {"no-answer-button", error, "RATING, FEEDBACK or APPRATING without a call to action of its own type",
     missingAnswerButton},
    {"no-options", error, "FEEDBACK without options that can be read", missingOptions},
    {"image-address", error, "an image address that is not an absolute http or https URL", badImageAddress},
    {"action-address", error, "EXTERNAL or DEEPLINK whose action is empty, has no scheme, or one that is never opened",
     badActionAddresses},
    {"other-customer", error, "with --customer: the campaign is for someone else and would be gone at the next launch",
     otherCustomer},
    {"store-id", error, "APPRATING, with no --store-id given as \"\"", missingStoreId},
    {"same-scope", error, "two campaigns of one run share a scope, so that one replaces or removes the other",
     repeatedScope},
    {"launch-word", error,
     "\"APP_LAUNCH\" stands somewhere in the trigger of a message that is no launch message (the next launch message "
     "deletes it)",
     hiddenLaunchWord},
    {"trigger-case", warning, "an event name that differs from \"INSTANT\" or \"APP_LAUNCH\" in letter case only",
     triggerInOtherCase},
    {"no-customer", warning, "no customer, so that it is shown at once or never", missingCustomer},
    {"unknown-key", warning, "a key that nothing reads, at any level", unknownKeys},
    {"wrong-kind", warning,
     "a value of another kind than is read (a number as text size, an object for a list, a number among options)",
     wrongKinds, explains},
    {"empty-button", warning, "a call to action without text", emptyButtons},
    {"unused-button", warning, "a call to action that the type does not draw", unusedButtons},
    {"unused-part", warning,
     "a title, message, image, options or style part that the type does not draw, or whose style it ignores",
     unusedParts},
    {"button-style-count", warning, "fewer or more button styles than buttons", buttonStyleCount},
    {"wrong-action", warning, "RATING, FEEDBACK or APPRATING as call to action of another type of message",
     wrongActions, explains},
    {"selection-type", warning, "a selection type that is not known", unknownSelectionType},
    {"equal-options", warning, "options that are equal but for letter case", equalOptions},
    {"color", warning, "a colour that is none", badColors, explains},
    {"color-order", warning,
     "eight digits whose first three pairs are equal and whose last differs (\"#FFFFFF80\"): white, black or grey "
     "with an alpha in another order than the device's",
     alphaInOtherOrder, explains},
    {"no-layout-color", warning, "a card without background, its texts stand on the application", missingCardColor},
    {"contrast", warning, "a text below 4.5 : 1, a mark or star below 3 : 1, against what it stands on", weakContrast},
    {"text-size", warning, "a size that is no whole number above 0, or above 100", badTextSizes},
    {"text-style", warning, "a style that is neither \"BOLD\" nor \"ITALIC\" nor a font that is there",
     unknownTextStyles},
    {"missing-characters", warning, "characters that no font here has", missingCharacters},
    {"blank-text", warning, "a text of blanks only", blankTexts},
    {"markup", warning, "HTML, Markdown, a template's braces or a written \\n in a text that is shown as it stands",
     markupInTexts},
    {"number-text", warning, "a trigger attribute that is a text holding a number (it matches texts only)",
     numbersAsTexts},
    {"validity", warning,
     "a validity in the past, written as an ISO 8601 date or date-time (blank or T between) or as seconds since 1970 "
     "(it "
     "decides nothing on the device)",
     pastValidity},
    {"gateway", warning, "a gateway that is not known", unknownGateway},
    {"cut", warning, "more text, buttons or options than are drawn", cutTexts},
    {"tall", warning, "more than one screen high on the given device, so that it must be scrolled to its buttons",
     tallerThanTheScreen},
    {"image-lost", warning, "with --online: the image cannot be fetched or read (an error for a header or footer)",
     lostImage},
    {"image-large", warning, "with --online: larger than 2 MB or four times the pixels shown", largeImage},
    {"image-small", warning, "with --online: fewer pixels than shown", smallImage},
};

}  // namespace

std::span<const Rule> campaignRules() { return rules; }

}  // namespace vantix
