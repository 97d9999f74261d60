#include "CampaignCheck/Rules/PictureQuestions.h"

#include "CampaignCheck/Rules/Wording.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Ports/TextMeasurer.h"
#include "Platform/Values/Contrast.h"
#include "Platform/Values/UTF8.h"
#include "VantixInAppMessage/templates/DrawnRows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <set>

namespace vantix {

namespace {

/// Whether its colour is the author's to choose; the close control chooses its own, and lies above others.
bool isAuthored(const AccessibleElement& element) {
    constexpr std::array roles{Role::title, Role::message, Role::button, Role::option, Role::star, Role::close};
    return std::ranges::find(roles, element.role) != roles.end();
}

/// The element that stands at the point; the innermost one, which is painted last.
const AccessibleElement* elementAt(const Picture::State& state, Point point) {
    auto found = std::find_if(state.elements.rbegin(), state.elements.rend(), [&](const AccessibleElement& element) {
        return isAuthored(element) && element.frame.contains(point);
    });
    return found == state.elements.rend() || found->role == Role::close ? nullptr : &*found;
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

/// Whether nothing of the message itself lies behind it, which is a mistake of its own.
bool standsOnTheApplication(const Sign& sign, std::size_t item, const Picture::State& state, const Picture& picture) {
    bool isWindowOpaque = picture.window(Color::white()) == picture.window(Color::black());
    return !isWindowOpaque && !state.isPainted(sign.place, item);
}

/// Rounded down, so that what is too little never reads as enough.
std::string ratio(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f : 1", std::floor(number * 10) / 10);
    return text;
}

/// A sign as it is seen, and what it is seen on.
struct Seen {
    Color color;
    Color background;

    double contrast() const { return vantix::contrast(color, background); }
};

/// At its best, whatever the application is like where it shines through.
Seen atBest(const Sign& sign, std::size_t item, const Picture::State& state, const Picture& picture) {
    auto seenOn = [&](Color application) {
        Color background = state.background(sign.place, item, picture.window(application));
        return Seen{composited(sign.color, background), background};
    };
    Seen onWhite = seenOn(Color::white());
    Seen onBlack = seenOn(Color::black());
    return onBlack.contrast() > onWhite.contrast() ? onBlack : onWhite;
}

void addContrastObjections(const Picture::State& state, const Picture& picture, Objections& found,
                           std::set<std::string>& told) {
    for (std::size_t at = 0; at < state.items.size(); ++at) {
        auto sign = signOf(state.items[at]);
        const AccessibleElement* element = sign ? elementAt(state, sign->place) : nullptr;
        if (!element || standsOnTheApplication(*sign, at, state, picture)) continue;
        double asked = sign->isText ? 4.5 : 3;
        Seen seen = atBest(*sign, at, state, picture);
        if (seen.contrast() >= asked || !told.insert(colorPlace(*element)).second) continue;
        found.push_back({colorPlace(*element),
                         whatStandsThere(*element) + ", " + seen.color.hexString() + " on " +
                             seen.background.hexString() + ", stands out by " + ratio(seen.contrast()) +
                             " only, and people with weak eyes need " + ratio(asked),
                         quoted(readableColor(seen.background).hexString()) + ", or another background"});
    }
}

std::size_t drawnOptions(const Picture& picture) {
    return static_cast<std::size_t>(
        std::ranges::count(picture.untouched().elements, Role::option, &AccessibleElement::role));
}

/// The list with one element at most that is not drawn.
template <typename Element>
void shorten(std::vector<Element>& list, std::size_t drawn) {
    if (list.size() > drawn + 1) list.resize(drawn + 1);
}

constexpr const char* anyText = "x";

/// The message with a text wherever one can stand, so that only its type decides what is drawn.
VantixInAppMessagePayload filled(VantixInAppMessagePayload message, const Picture& picture) {
    shorten(message.body.ctas, picture.drawnButtons());
    shorten(message.body.feedback.options, drawnOptions(picture));
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
    if (key == "textSize") style.textSize = style.textSize == 16 ? 24 : 16;
    if (key == "textStyle") {
        style.textFont.reset();
        style.textStyle = style.textStyle == TextFontStyle::bold ? TextFontStyle::regular : TextFontStyle::bold;
    }
}

/// The message with another value in the field; absent for a field that is not drawn by its own.
std::optional<VantixInAppMessagePayload> changedIn(const WrittenField& written, VantixInAppMessagePayload message) {
    InAppBody& body = message.body;
    InAppMessageStyle& style = message.style;
    if (written.place == "/body/title")
        body.title = std::string(anyText) + body.title;
    else if (written.place == "/body/message")
        body.message = std::string(anyText) + body.message;
    else if (written.place == "/body/image")
        body.image.clear();
    else if (written.place == "/body/feedbackOptions")
        body.feedback.options.insert(body.feedback.options.begin(), anyText);
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

/// What the field belongs to, in words.
std::string_view whole(const WrittenField& written) {
    if (written.container == "/template/rating") return "stars";
    if (written.container == "/template/ctas/*") return "button";
    return std::string_view(written.container).substr(written.container.rfind('/') + 1);
}

bool isEmptyText(const Value& value) { return value.text() && value.text()->empty(); }

/// Of a type that draws them as rows; where another one draws fewer, that is no cut.
void addUndrawnRows(const char* list, const std::string& what, const std::vector<std::string>& written,
                    std::size_t drawn, Objections& found) {
    if (drawn == written.size() || drawn != drawnRows(written).size()) return;
    found.push_back({placeOf(list, drawn),
                     "only the first " + std::to_string(drawn) + " of " + std::to_string(written.size()) + " " + what +
                         " are drawn",
                     "fewer and shorter " + what});
}

std::vector<std::string> buttonTexts(const InAppBody& body) {
    std::vector<std::string> texts;
    for (const InAppCTA& cta : body.ctas) texts.push_back(cta.actionText.value_or(""));
    return texts;
}

/// "U+E000 U+0301"
std::string codePointNames(const std::string& text) {
    std::string names;
    for (char32_t character : codePoints(text)) {
        char name[16];
        std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
        names += names.empty() ? "" : " ";
        names += name;
    }
    return names;
}

}  // namespace

Objections unusedButtons(const CheckedCampaign& checked) {
    const InAppBody& body = checked.message().body;
    // A card does what its first button does, drawn or not.
    std::size_t used = std::max<std::size_t>(checked.picture.drawnButtons(), 1);
    if (checked.picture.isEmpty() || used >= drawnRows(buttonTexts(body)).size()) return {};
    return {{placeOf("/body/ctas", used),
             "a message of type " + quoted(rawValue(body.type)) + " draws its first button only",
             "one button, or a type that draws more"}};
}

Objections unusedParts(const CheckedCampaign& checked) {
    Objections found;
    if (checked.picture.isEmpty()) return found;
    VantixInAppMessagePayload message = filled(checked.message(), checked.picture);
    std::optional<Picture> withAllTexts;
    if (message != checked.message()) withAllTexts.emplace(message, checked.options.device);
    const Picture& picture = withAllTexts ? *withAllTexts : checked.picture;
    forEachWrittenField(checked.campaign, [&](const WrittenField& written) {
        if (!written.field || isEmptyText(written.value)) return;
        bool isOfUndrawnButton =
            written.container == "/template/ctas/*" && indexIn(written.place) >= picture.drawnButtons();
        auto changed = isOfUndrawnButton ? std::nullopt : changedIn(written, message);
        if (!changed || picture.differsFor(*changed)) return;
        found.push_back({written.place,
                         "a message of type " + quoted(rawValue(message.body.type)) + " does not draw " +
                             quoted(written.key) + " of the " + std::string(whole(written)),
                         "no " + quoted(written.key) + " there, or a type that draws it"});
    });
    return found;
}

Objections missingCardColor(const CheckedCampaign& checked) {
    const Picture::State& state = checked.picture.untouched();
    for (std::size_t at = 0; at < state.items.size(); ++at) {
        auto sign = signOf(state.items[at]);
        if (!sign || !sign->isText || !standsOnTheApplication(*sign, at, state, checked.picture)) continue;
        return {{"/template/layoutBackgroundColor",
                 "the card has no background of its own, its texts stand on whatever the application shows",
                 "a color that is not see-through, such as \"#FFFFFF\""}};
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
    for (const ShownText& shown : shownTexts(checked.message())) {
        const AccessibleElement* element = checked.picture.untouched().element(shown.element);
        if (!element || !element->font) continue;
        std::string missing;
        for (const std::string& character : measurer.missingCharacters(element->label, *element->font)) {
            missing += character;
        }
        if (missing.empty()) continue;
        found.push_back({shown.place,
                         "no font here has " + quoted(missing) + " (" + codePointNames(missing) + ") of the " +
                             shown.what() + ", and boxes are drawn instead",
                         "other characters, or a look at a device that has them"});
    }
    return found;
}

Objections cutTexts(const CheckedCampaign& checked) {
    Objections found;
    if (checked.picture.isEmpty()) return found;
    const InAppBody& body = checked.message().body;
    addUndrawnRows("/body/ctas", "buttons", buttonTexts(body), checked.picture.drawnButtons(), found);
    addUndrawnRows("/body/feedbackOptions/options", "options", body.feedback.options, drawnOptions(checked.picture),
                   found);
    for (const ShownText& shown : shownTexts(checked.message())) {
        const AccessibleElement* element = checked.picture.untouched().element(shown.element);
        if (!element || element->label.size() >= shown.text.size()) continue;
        found.push_back({shown.place,
                         "the " + shown.what() + " is longer than what is drawn, an ellipsis stands for the rest",
                         "a shorter text"});
    }
    return found;
}

Objections tallerThanTheScreen(const CheckedCampaign& checked) {
    constexpr double rounding = 1;
    double hidden = checked.picture.scrollRange();
    if (hidden <= rounding) return {};
    return {{"/body",
             "the message is " + std::to_string(std::lround(hidden)) +
                 " points higher than the screen, and must be scrolled to its end",
             "shorter or smaller texts, fewer options"}};
}

}  // namespace vantix
