#include "CampaignCheck/Rules/StyleQuestions.h"

#include "CampaignCheck/Rules/Wording.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "Platform/Values/Color.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageStyle.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace vantix {

namespace {

/// Asks a question of each text of the template that stands in a field of a kind.
template <typename IsMeant, typename Question>
Objections ofEachStyleText(const CheckedCampaign& checked, IsMeant isMeant, Question question) {
    Objections found;
    forEachWrittenField(checked.campaign, [&](const WrittenField& written) {
        if (!written.field || !written.value.text() || !isMeant(*written.field)) return;
        if (found.size() > mostObjections) return;
        std::optional<Objection> objection = question(*written.value.text(), written);
        if (!objection) return;
        objection->place = written.place;
        found.push_back(std::move(*objection));
    });
    return found;
}

bool isColor(const CampaignField& field) { return field.kind == FieldKind::color; }
bool isTextSize(const CampaignField& field) { return field.kind == FieldKind::numberText; }
bool isTextStyle(const CampaignField& field) { return field.key() == "textStyle"; }

std::string upperCase(std::string text) {
    for (char& letter : text) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return text;
}

/// The digits with the alpha that stands at their end put first.
std::string alphaFirst(const std::string& color) { return color.substr(0, 1) + color.substr(7) + color.substr(1, 6); }

std::string percent(double part) { return std::to_string(std::lround(part * 100)) + " %"; }

/// The style that the module decodes from this one text.
InAppMessageComponentStyle styleOf(const char* key, const std::string& text) {
    return InAppMessageComponentStyle::generate(Dictionary{{key, text}});
}

/// Whether the module knows the text as a style, or as the name of a font.
bool isStyle(const std::string& text) {
    const InAppMessageComponentStyle usual;
    return styleOf("textStyle", text) != usual || *usual.getJSON().text("textStyle") == text;
}

ElementIdentity styledElement(const WrittenField& written) {
    if (written.container == "/template/title") return {Role::title, 0};
    if (written.container == "/template/message") return {Role::message, 0};
    return {Role::button, static_cast<int>(indexIn(written.place))};
}

/// What becomes of a size, in words.
std::string drawnSize(const CheckedCampaign& checked, const WrittenField& written) {
    const AccessibleElement* element = checked.picture.untouched().element(styledElement(written));
    if (!element || !element->font) return "the device takes none from it";
    long points = std::lround(element->font->size);
    return "the text is drawn at " + std::to_string(points) + (points == 1 ? " point" : " points");
}

std::string digitsIn(const std::string& text) { return text.substr(0, text.find_first_not_of("0123456789")); }

}  // namespace

Objections badColors(const CheckedCampaign& checked) {
    return ofEachStyleText(
        checked, isColor, [](const std::string& text, const WrittenField&) -> std::optional<Objection> {
            if (text.empty() || colorFromText(text)) return {};
            bool lacksSign = colorFromText("#" + text).has_value();
            return Objection{{},
                             quoted(text) + " is no color that the device knows, it draws as if there were none",
                             lacksSign ? quoted("#" + text) : "\"#RRGGBB\", \"#RGB\" or \"#AARRGGBB\""};
        });
}

Objections alphaInOtherOrder(const CheckedCampaign& checked) {
    return ofEachStyleText(
        checked, isColor, [](const std::string& text, const WrittenField&) -> std::optional<Objection> {
            if (text.size() != 9 || !colorFromText(text)) return {};
            std::string color = upperCase(text);
            bool isGrey = color.substr(1, 2) == color.substr(3, 2) && color.substr(3, 2) == color.substr(5, 2);
            if (!isGrey || color.substr(5, 2) == color.substr(7, 2)) return {};
            return Objection{{},
                             quoted(text) + " has its alpha first on the device: it draws " +
                                 colorFromText(text)->hexString() + ", " + percent(colorFromText(text)->alpha) +
                                 " opaque",
                             quoted(alphaFirst(text)) + " for a see-through white, black or grey"};
        });
}

Objections badTextSizes(const CheckedCampaign& checked) {
    constexpr int largest = 100;
    return ofEachStyleText(
        checked, isTextSize, [&](const std::string& text, const WrittenField& written) -> std::optional<Objection> {
            auto size = wholeNumber(text);
            if (size && *size > 0 && *size <= largest) return {};
            std::string digits = digitsIn(text);
            return Objection{{},
                             quoted(text) + " is no whole number from 1 to 100, " + drawnSize(checked, written),
                             size || digits.empty() ? "\"16\"" : quoted(digits)};
        });
}

Objections unknownTextStyles(const CheckedCampaign& checked) {
    return ofEachStyleText(
        checked, isTextStyle, [](const std::string& text, const WrittenField&) -> std::optional<Objection> {
            if (text.empty() || isStyle(text)) return {};
            return Objection{{},
                             quoted(text) + " is neither a style nor a font of this device, the text is drawn as usual",
                             isStyle(upperCase(text)) ? quoted(upperCase(text))
                                                      : "\"BOLD\", \"ITALIC\" or the exact name of a font"};
        });
}

Objections buttonStyleCount(const CheckedCampaign& checked) {
    auto styles = checked.message().style.ctas.size();
    auto buttons = checked.message().body.ctas.size();
    bool isFew = styles < std::min(buttons, checked.picture.drawnButtons());
    if ((!isFew && styles <= buttons) || checked.campaign.style.isEmpty()) return {};
    // Buttons that cannot be read are another mistake.
    const Value* written = checked.campaign.body.find(NotificationPayloadKeys::ctas);
    bool isUnread = buttons == 0 && written && !(written->list() && written->list()->empty());
    if (isUnread || !checked.campaign.isReadable(NotificationPayloadKeys::body)) return {};
    return {{"/template/ctas",
             std::to_string(styles) + (styles == 1 ? " style for " : " styles for ") + std::to_string(buttons) +
                 (buttons == 1 ? " button: " : " buttons: ") +
                 (isFew ? "the others are drawn without one" : "the others style nothing"),
             "one style for each button, in their order"}};
}

}  // namespace vantix
