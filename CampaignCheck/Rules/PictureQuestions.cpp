#include "CampaignCheck/Rules/Questions.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Ports/TextMeasurer.h"
#include "Platform/Values/Contrast.h"
#include "VantixInAppMessage/templates/DrawnRows.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <set>

namespace vantix {

namespace {

/// The element with a text or picture of the author's that stands at the point; the innermost one.
const AccessibleElement* elementAt(const Picture::State& state, Point point) {
    constexpr std::array authored{Role::title, Role::message, Role::button, Role::option, Role::star};
    auto found = std::find_if(state.elements.rbegin(), state.elements.rend(), [&](const AccessibleElement& element) {
        bool isAuthored = std::find(authored.begin(), authored.end(), element.role) != authored.end();
        return isAuthored && element.frame.contains(point);
    });
    return found == state.elements.rend() ? nullptr : &*found;
}

std::string colorPlace(const AccessibleElement& element) {
    switch (element.role) {
        case Role::title:
            return "/template/title/textColor";
        case Role::message:
            return "/template/message/textColor";
        case Role::button:
            return placeOf("/template/ctas", static_cast<std::size_t>(element.index), "textColor");
        case Role::star:
            return element.selected.value_or(false) ? "/template/rating/selectedColor"
                                                    : "/template/rating/unselectedColor";
        default:
            return "/template/layoutBackgroundColor";
    }
}

std::string whatStandsThere(const AccessibleElement& element) {
    bool isSelected = element.selected.value_or(false);
    if (element.role == Role::star) return isSelected ? "a selected star" : "a star";
    return "the " + roleName(element.role);
}

/// A coloured text or sign, and where it stands.
struct Sign {
    Point place;
    Color color;
    bool isText;
};

std::optional<Sign> signOf(const DisplayItem& item) {
    if (const auto* text = std::get_if<DrawText>(&item)) {
        constexpr double aboveBaseline = 0.3;
        return Sign{{text->origin.x + 1, text->origin.y - text->font.size * aboveBaseline}, text->color, true};
    }
    const auto* image = std::get_if<DrawImage>(&item);
    if (!image || !image->tint) return {};
    Point centre{image->frame.minX() + image->frame.size.width / 2, image->frame.minY() + image->frame.size.height / 2};
    return Sign{centre, *image->tint, false};
}

std::string ratio(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f : 1", number);
    return text;
}

std::optional<Objection> contrastObjection(const AccessibleElement& element, const Sign& sign,
                                           const Color& background) {
    double asked = sign.isText ? 4.5 : 3;
    Color color = composited(sign.color, background);
    double measured = contrast(color, background);
    // What is said must not read as if it were enough.
    if (measured >= asked) return {};
    return Objection{colorPlace(element),
                     whatStandsThere(element) + ", " + color.hexString() + " on " + background.hexString() +
                         ", stands out by " + ratio(measured) + " only, less than the " + ratio(asked) +
                         " that people with weak eyes need",
                     "\"" + readableColor(background).hexString() + "\", or another background"};
}

void addContrastObjections(const Picture::State& state, const Picture& picture, Objections& found,
                           std::set<std::string>& told) {
    for (std::size_t at = 0; at < state.items.size(); ++at) {
        auto sign = signOf(state.items[at]);
        const AccessibleElement* element = sign ? elementAt(state, sign->place) : nullptr;
        auto background = element ? state.background(sign->place, at, picture.window()) : std::nullopt;
        if (!background) continue;
        auto objection = contrastObjection(*element, *sign, *background);
        if (objection && told.insert(objection->place).second) found.push_back(std::move(*objection));
    }
}

/// The message with a text wherever one can stand, so that only its type decides what is drawn.
VantixInAppMessagePayload filled(VantixInAppMessagePayload message) {
    constexpr const char* anyText = "x";
    if (message.body.title.empty()) message.body.title = anyText;
    if (message.body.message.empty()) message.body.message = anyText;
    for (InAppCTA& cta : message.body.ctas) {
        if (cta.actionText.value_or("").empty()) cta.actionText = anyText;
    }
    return message;
}

constexpr Color otherColor{0.25, 0.75, 0.5, 1};

/// Changes what stands under a key of a text's style.
void change(InAppMessageComponentStyle& style, std::string_view key) {
    if (key == "textColor") style.textColor = otherColor;
    if (key == "backgroundColor") style.backgroundColor = otherColor;
    if (key == "textSize") style.textSize += 8;
    if (key == "textStyle") {
        style.textFont.reset();
        style.textStyle = style.textStyle == TextFontStyle::bold ? TextFontStyle::regular : TextFontStyle::bold;
    }
}

/// The element of a list that a pointer leads through: 2 of "/template/ctas/2/textColor".
std::size_t indexIn(const std::string& place) {
    auto end = place.rfind('/');
    return std::stoul(place.substr(place.rfind('/', end - 1) + 1));
}

/// The message with another value in the field; absent for a field that is not drawn by its own.
std::optional<VantixInAppMessagePayload> changedIn(const WrittenField& written, VantixInAppMessagePayload message) {
    InAppBody& body = message.body;
    InAppMessageStyle& style = message.style;
    if (written.place == "/body/title")
        body.title += "x";
    else if (written.place == "/body/message")
        body.message += "x";
    else if (written.place == "/body/image")
        body.image.clear();
    else if (written.place == "/body/feedbackOptions")
        body.feedback.options.emplace_back("x");
    else if (written.place == "/template/layoutBackgroundColor")
        style.layoutBackgroundColor = otherColor;
    else if (written.place == "/template/rating/selectedColor")
        style.rating.selectedColor = otherColor;
    else if (written.place == "/template/rating/unselectedColor")
        style.rating.unselectedColor = otherColor;
    else if (written.container == "/template/title")
        change(style.title, written.key);
    else if (written.container == "/template/message")
        change(style.message, written.key);
    else if (written.container == "/template/ctas/*" &&
             indexIn(written.place) < std::min(style.ctas.size(), body.ctas.size()))
        change(style.ctas[indexIn(written.place)], written.key);
    else
        return {};
    return message;
}

bool isEmptyText(const Value& value) { return value.text() && value.text()->empty(); }

/// How many of the buttons are drawn; the others come after them.
std::size_t drawnButtons(const CheckedCampaign& checked) {
    const auto& ctas = checked.message().body.ctas;
    auto withFirst = [&](std::size_t count) {
        VantixInAppMessagePayload message = checked.message();
        message.body.ctas.resize(count);
        return message;
    };
    std::size_t few = std::min<std::size_t>(1, ctas.size());
    std::size_t enough = ctas.size();
    while (few < enough) {
        std::size_t middle = (few + enough) / 2;
        if (checked.picture.differsFor(withFirst(middle)))
            few = middle + 1;
        else
            enough = middle;
    }
    return enough;
}

bool isDrawn(const CheckedCampaign& checked) { return !checked.picture.untouched().items.empty(); }

std::vector<std::string> buttonTexts(const InAppBody& body) {
    std::vector<std::string> texts;
    for (const InAppCTA& cta : body.ctas) texts.push_back(cta.actionText.value_or(""));
    return texts;
}

}  // namespace

Objections unusedButtons(const CheckedCampaign& checked) {
    Objections found;
    if (!isDrawn(checked)) return found;
    const InAppBody& body = checked.message().body;
    auto rows = drawnRows(buttonTexts(body)).size();
    for (std::size_t index = drawnButtons(checked); index < rows; ++index) {
        found.push_back({placeOf("/body/ctas", index),
                         "a message of type \"" + std::string(rawValue(body.type)) + "\" draws no such button, the " +
                             (index == 1 ? "first one is its only one" : "first ones are all"),
                         "the buttons that are drawn, and no others"});
    }
    return found;
}

Objections unusedParts(const CheckedCampaign& checked) {
    Objections found;
    if (!isDrawn(checked)) return found;
    VantixInAppMessagePayload message = filled(checked.message());
    Picture picture(message, checked.picture.traits());
    std::size_t buttons = drawnButtons(checked);
    forEachWrittenField(checked.campaign, [&](const WrittenField& written) {
        if (!written.field || isEmptyText(written.value)) return;
        bool isOfUndrawnButton = written.container == "/template/ctas/*" && indexIn(written.place) >= buttons;
        auto changed = isOfUndrawnButton ? std::nullopt : changedIn(written, message);
        if (!changed || picture.differsFor(*changed)) return;
        found.push_back({written.place,
                         "a message of type \"" + std::string(rawValue(message.body.type)) + "\" does not draw " +
                             quoted(written.key) + " of the " + (written.container == "/body" ? "body" : "style"),
                         "leave it out, or choose a type that draws it"});
    });
    return found;
}

Objections missingCardColor(const CheckedCampaign& checked) {
    const Picture::State& state = checked.picture.untouched();
    for (std::size_t at = 0; at < state.items.size(); ++at) {
        auto sign = signOf(state.items[at]);
        if (!sign || !sign->isText || state.background(sign->place, at, checked.picture.window())) continue;
        return {{"/template/layoutBackgroundColor",
                 "the card has no background of its own, the texts stand on whatever the application shows",
                 "\"#FFFFFF\", or another color that is not see-through"}};
    }
    return {};
}

Objections weakContrast(const CheckedCampaign& checked) {
    Objections found;
    std::set<std::string> told;
    for (const Picture::State* state : {&checked.picture.untouched(), &checked.picture.answered()}) {
        addContrastObjections(*state, checked.picture, found, told);
    }
    return found;
}

Objections missingCharacters(const CheckedCampaign& checked) {
    Objections found;
    const TextMeasurer& measurer = *Platform::current()->textMeasurer;
    for (const auto& [place, what, text] : shownTexts(checked.message())) {
        for (const AccessibleElement& element : checked.picture.untouched().elements) {
            if (!element.font || element.label != text) continue;
            std::string missing;
            for (const std::string& character : measurer.missingCharacters(text, *element.font)) missing += character;
            if (!missing.empty()) {
                found.push_back({place,
                                 "no font here has " + quoted(missing) + " of the " + std::string(what) +
                                     ", which is drawn as boxes",
                                 "other characters, or a look at a device that has them"});
            }
            break;
        }
    }
    return found;
}

Objections cutTexts(const CheckedCampaign& checked) {
    Objections found;
    const InAppBody& body = checked.message().body;
    auto addRows = [&](const char* list, const char* what, std::size_t drawn, std::size_t written) {
        if (drawn == written) return;
        found.push_back(
            {placeOf(list, drawn),
             "only the first " + std::to_string(drawn) + " of " + std::to_string(written) + " " + what + " are drawn",
             "fewer and shorter " + std::string(what)});
    };
    if (!isDrawn(checked)) return found;
    addRows("/body/ctas", "buttons", drawnRows(buttonTexts(body)).size(), body.ctas.size());
    addRows("/body/feedbackOptions/options", "options", drawnRows(body.feedback.options).size(),
            body.feedback.options.size());
    for (const auto& [place, what, text] : shownTexts(checked.message())) {
        const auto& elements = checked.picture.untouched().elements;
        bool isCut = std::any_of(elements.begin(), elements.end(), [text = text](const AccessibleElement& element) {
            constexpr std::string_view ellipsis = "…";
            std::string_view label = element.label;
            if (label.size() <= ellipsis.size() || label == text || !label.ends_with(ellipsis)) return false;
            return text.starts_with(label.substr(0, label.size() - ellipsis.size())) && label.size() > 1024;
        });
        if (!isCut) continue;
        found.push_back({place,
                         "the " + std::string(what) + " is longer than what is drawn, an ellipsis stands for the rest",
                         "a shorter text"});
    }
    return found;
}

Objections tallerThanTheScreen(const CheckedCampaign& checked) {
    constexpr double rounding = 1;
    double hidden = checked.picture.untouched().scrollRange;
    if (hidden <= rounding) return {};
    return {{"/body",
             "the message is " + std::to_string(static_cast<int>(hidden)) +
                 " points higher than the screen, and must be scrolled to its end",
             "shorter or smaller texts, fewer options"}};
}

}  // namespace vantix
