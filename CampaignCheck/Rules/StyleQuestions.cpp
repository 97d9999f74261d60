#include "CampaignCheck/Rules/Questions.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "Platform/Values/Color.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageStyle.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"

#include <algorithm>
#include <optional>

namespace vantix {

namespace {

/// Asks a question of each text of the template under a key, or of a kind, that the device reads.
template <typename IsMeant, typename Question>
Objections ofEachStyleText(const CheckedCampaign& checked, IsMeant isMeant, Question question) {
    Objections found;
    forEachWrittenField(checked.campaign, [&](const WrittenField& written) {
        if (!written.field || !written.value.text() || !isMeant(*written.field)) return;
        std::optional<Objection> objection = question(*written.value.text());
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
std::string alphaFirst(const std::string& color) { return "#" + color.substr(7) + color.substr(1, 6); }

/// The style that the module decodes from this one text.
InAppMessageComponentStyle styleOf(const char* key, const std::string& text) {
    return InAppMessageComponentStyle::generate(Dictionary{{key, text}});
}

std::string digitsIn(const std::string& text) { return text.substr(0, text.find_first_not_of("0123456789")); }

}  // namespace

Objections badColors(const CheckedCampaign& checked) {
    return ofEachStyleText(checked, isColor, [](const std::string& text) -> std::optional<Objection> {
        if (text.empty() || colorFromText(text)) return {};
        bool lacksSign = colorFromText("#" + text).has_value();
        return Objection{{},
                         quoted(text) + " is no color that the device knows, it draws as if there were none",
                         lacksSign ? "\"#" + text + "\"" : "\"#RRGGBB\", \"#RGB\" or \"#AARRGGBB\""};
    });
}

Objections alphaInOtherOrder(const CheckedCampaign& checked) {
    return ofEachStyleText(checked, isColor, [](const std::string& text) -> std::optional<Objection> {
        if (text.size() != 9 || !colorFromText(text)) return {};
        std::string color = upperCase(text);
        bool isGrey = color.substr(1, 2) == color.substr(3, 2) && color.substr(3, 2) == color.substr(5, 2);
        if (!isGrey || color.substr(5, 2) == color.substr(7, 2)) return {};
        return Objection{{},
                         quoted(text) + " has its alpha first on the device: it draws " +
                             colorFromText(text)->hexString() + ", see-through by the first two digits",
                         "\"" + alphaFirst(text) + "\" for a see-through white, black or grey"};
    });
}

Objections badTextSizes(const CheckedCampaign& checked) {
    constexpr int largest = 100;
    return ofEachStyleText(checked, isTextSize, [&](const std::string& text) -> std::optional<Objection> {
        auto size = wholeNumber(text);
        if (size && *size > 0 && *size <= largest) return {};
        std::string drawn = std::to_string(static_cast<int>(std::clamp(styleOf("textSize", text).textSize, 1.0, 1e9)));
        std::string digits = digitsIn(text);
        return Objection{{},
                         quoted(text) + " is no whole number from 1 to 100, the text is drawn at " + drawn + " points",
                         size || digits.empty() ? "\"16\"" : "\"" + digits + "\""};
    });
}

Objections unknownTextStyles(const CheckedCampaign& checked) {
    return ofEachStyleText(checked, isTextStyle, [](const std::string& text) -> std::optional<Objection> {
        bool isKnown = text.empty() || text == "REGULAR" || styleOf("textStyle", text) != InAppMessageComponentStyle();
        if (isKnown) return {};
        bool isWord = styleOf("textStyle", upperCase(text)) != InAppMessageComponentStyle();
        return Objection{{},
                         quoted(text) + " is neither a style nor a font of this device, the text is drawn as usual",
                         isWord ? "\"" + upperCase(text) + "\"" : "\"BOLD\", \"ITALIC\" or the exact name of a font"};
    });
}

Objections buttonStyleCount(const CheckedCampaign& checked) {
    auto styles = checked.message().style.ctas.size();
    auto buttons = checked.message().body.ctas.size();
    bool isSilent = checked.campaign.style.isEmpty() && styles == 0;
    if (styles == buttons || isSilent) return {};
    return {{"/template/ctas",
             std::to_string(styles) + " styles for " + std::to_string(buttons) +
                 " buttons: " + (styles < buttons ? "the others are drawn without one" : "the others style nothing"),
             "one style for each button, in their order"}};
}

}  // namespace vantix
