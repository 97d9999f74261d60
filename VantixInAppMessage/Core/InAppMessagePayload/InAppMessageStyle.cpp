#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageStyle.h"

#include "Platform/Ports/FontCatalogue.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/WordTable.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/NestedJSON.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"

namespace vantix {

namespace Keys = InAppMessagePayloadKeys;

namespace {

constexpr LogSource log{"Core/InAppMessagePayload/InAppMessageStyle"};

constexpr WordTable<TextFontStyle, 3> textFontStyles{
    {{TextFontStyle::regular, "REGULAR"}, {TextFontStyle::bold, "BOLD"}, {TextFontStyle::italic, "ITALIC"}}};

bool isInstalled(const std::string& fontName) { return Platform::current()->fontCatalogue->contains(fontName); }

void readColor(const Dictionary& dictionary, const char* key, std::optional<Color>& color) {
    if (const std::string* text = dictionary.text(key)) color = colorFromText(*text);
}

void writeColor(Dictionary& dictionary, const char* key, const std::optional<Color>& color) {
    if (color) dictionary.set(key, color->hexString());
}

Value describe(const std::optional<Color>& color) { return color ? Value(color->hexStringWithAlpha()) : Value(); }

void readComponent(const Dictionary& dictionary, const char* key, InAppMessageComponentStyle& component) {
    const Dictionary* object = dictionary.dictionary(key);
    if (object && !object->isEmpty()) component = InAppMessageComponentStyle::generate(*object);
}

}  // namespace

std::string_view rawValue(TextFontStyle style) { return textFontStyles.word(style); }

InAppMessageComponentStyle InAppMessageComponentStyle::generate(const Dictionary& dictionary) {
    InAppMessageComponentStyle style;
    readColor(dictionary, Keys::textColor, style.textColor);
    readColor(dictionary, Keys::backgroundColor, style.backgroundColor);
    if (const std::string* size = dictionary.text(Keys::textSize)) {
        if (auto number = wholeNumber(*size)) style.textSize = static_cast<double>(*number);
    }
    const std::string* styleOrFont = dictionary.text(Keys::textStyle);
    if (styleOrFont && !styleOrFont->empty()) {
        style.textStyle = textFontStyles.value(*styleOrFont).value_or(style.textStyle);
        if (isInstalled(*styleOrFont)) style.textFont = *styleOrFont;
    }
    return style;
}

std::vector<InAppMessageComponentStyle> InAppMessageComponentStyle::generate(
    const std::vector<Dictionary>& dictionaries) {
    std::vector<InAppMessageComponentStyle> styles;
    for (const Dictionary& dictionary : dictionaries) styles.push_back(generate(dictionary));
    return styles;
}

Dictionary InAppMessageComponentStyle::getJSON() const {
    Dictionary dictionary;
    writeColor(dictionary, Keys::textColor, textColor);
    writeColor(dictionary, Keys::backgroundColor, backgroundColor);
    dictionary.set(Keys::textSize, textSize);
    dictionary.set(Keys::textStyle, textFont.value_or(std::string(rawValue(textStyle))));
    return dictionary;
}

Dictionary InAppMessageComponentStyle::description() const {
    return {{"textColor", describe(textColor)},
            {"textSize", textSize},
            {"textFont", orNull(textFont)},
            {"textStyle", std::string(rawValue(textStyle))},
            {"backgroundColor", describe(backgroundColor)}};
}

List InAppMessageComponentStyle::getJSON(const std::vector<InAppMessageComponentStyle>& ctas) {
    List list;
    for (const InAppMessageComponentStyle& cta : ctas) list.emplace_back(cta.getJSON());
    return list;
}

Font InAppMessageComponentStyle::getFont() const {
    if (textFont && !textFont->empty()) {
        return isInstalled(*textFont) ? Font::named(*textFont, textSize) : Font::system(textSize);
    }
    switch (textStyle) {
        case TextFontStyle::regular:
            return Font::system(textSize);
        case TextFontStyle::bold:
            return Font::system(textSize, FontWeight::bold);
        case TextFontStyle::italic:
            return Font::italicSystem(textSize);
    }
    return Font::system(textSize);
}

InAppRatingStyle InAppRatingStyle::generate(const Dictionary& dictionary) {
    InAppRatingStyle style;
    readColor(dictionary, Keys::starSelectedColor, style.selectedColor);
    readColor(dictionary, Keys::starNotSelectedColor, style.unselectedColor);
    return style;
}

Dictionary InAppRatingStyle::getJSON() const {
    Dictionary dictionary;
    writeColor(dictionary, Keys::starSelectedColor, selectedColor);
    writeColor(dictionary, Keys::starNotSelectedColor, unselectedColor);
    return dictionary;
}

Dictionary InAppRatingStyle::description() const {
    return {{"selectedColor", describe(selectedColor)}, {"unselectedColor", describe(unselectedColor)}};
}

InAppMessageStyle InAppMessageStyle::generate(const std::string& text) {
    auto dictionary = dictionaryFromText(text, "InAppMessageStyle not available due to invalid json response",
                                         "error occurred during json generation for InAppMessageStyle:", log);
    if (!dictionary) return {};

    InAppMessageStyle style;
    style.textRepresentation = text;
    readComponent(*dictionary, Keys::title, style.title);
    readComponent(*dictionary, Keys::message, style.message);
    if (const List* list = dictionary->list(Keys::ctas)) {
        if (auto objects = dictionaries(*list)) style.ctas = InAppMessageComponentStyle::generate(*objects);
    }
    readColor(*dictionary, Keys::phoneBackgroundColor, style.phoneBackgroundColor);
    readColor(*dictionary, Keys::layoutBackgroundColor, style.layoutBackgroundColor);
    if (const Dictionary* rating = dictionary->dictionary(Keys::rating))
        style.rating = InAppRatingStyle::generate(*rating);
    return style;
}

Dictionary InAppMessageStyle::getJSON() const {
    Dictionary dictionary{{Keys::title, title.getJSON()},
                          {Keys::message, message.getJSON()},
                          {Keys::ctas, InAppMessageComponentStyle::getJSON(ctas)}};
    writeColor(dictionary, Keys::phoneBackgroundColor, phoneBackgroundColor);
    writeColor(dictionary, Keys::layoutBackgroundColor, layoutBackgroundColor);
    dictionary.set(Keys::rating, rating.getJSON());
    return dictionary;
}

Dictionary InAppMessageStyle::description() const {
    List describedCTAs;
    for (const InAppMessageComponentStyle& cta : ctas) describedCTAs.emplace_back(cta.description());
    return {{"title", title.description()},
            {"message", message.description()},
            {"ctas", describedCTAs},
            {"rating", rating.description()},
            {"phoneBackgroundColor", describe(phoneBackgroundColor)},
            {"layoutBackgroundColor", describe(layoutBackgroundColor)},
            {"textRepresentation", textRepresentation}};
}

}  // namespace vantix
