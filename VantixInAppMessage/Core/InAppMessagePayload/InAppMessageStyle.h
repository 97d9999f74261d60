#pragma once

#include "Platform/Values/Color.h"
#include "Platform/Values/Export.h"
#include "Platform/Values/Font.h"
#include "Platform/Values/Value.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

enum class TextFontStyle { regular, bold, italic };

/// The wire word of a case.
VANTIX_EXPORT std::string_view rawValue(TextFontStyle style);

/// The style of one text element.
struct VANTIX_EXPORT InAppMessageComponentStyle {
    std::optional<Color> textColor;
    /// Points.
    double textSize = 16;
    /// The name of an installed font.
    std::optional<std::string> textFont;
    TextFontStyle textStyle = TextFontStyle::regular;
    std::optional<Color> backgroundColor;

    bool operator==(const InAppMessageComponentStyle&) const = default;

    /// Malformed values are left at their defaults, silently.
    static InAppMessageComponentStyle generate(const Dictionary& dictionary);
    static std::vector<InAppMessageComponentStyle> generate(const std::vector<Dictionary>& dictionaries);
    Dictionary getJSON() const;
    /// All fields in order, absent ones as null, for log lines.
    Dictionary description() const;
    static List getJSON(const std::vector<InAppMessageComponentStyle>& ctas);

    /// The font to draw this element with. A font name that is not installed gives the regular system font.
    Font getFont() const;
};

/// The colours of a filled and of an empty rating star.
struct VANTIX_EXPORT InAppRatingStyle {
    std::optional<Color> selectedColor;
    std::optional<Color> unselectedColor;

    bool operator==(const InAppRatingStyle&) const = default;

    static InAppRatingStyle generate(const Dictionary& dictionary);
    Dictionary getJSON() const;
    /// All fields in order, absent ones as null, for log lines.
    Dictionary description() const;
};

/// The style of a whole message.
struct VANTIX_EXPORT InAppMessageStyle {
    InAppMessageComponentStyle title;
    InAppMessageComponentStyle message;
    /// One for each call to action, in their order.
    std::vector<InAppMessageComponentStyle> ctas;
    InAppRatingStyle rating;
    /// Behind the card, over the whole window.
    std::optional<Color> phoneBackgroundColor;
    /// Behind the card's content.
    std::optional<Color> layoutBackgroundColor;
    /// The JSON text that this style was parsed from; the store keeps it.
    std::string textRepresentation;

    bool operator==(const InAppMessageStyle&) const = default;

    /// Never fails: a text that is no JSON object gives the default style and one error line.
    static InAppMessageStyle generate(const std::string& text);
    Dictionary getJSON() const;
    /// All fields in order, absent ones as null, for log lines.
    Dictionary description() const;
};

}  // namespace vantix
