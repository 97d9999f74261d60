#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Font.h"
#include "Platform/Values/Geometry.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// One line of a wrapped text, in logical order, without its line break.
struct TextLine {
    std::string text;
    double width = 0;

    bool operator==(const TextLine&) const = default;
};

/// A text broken into lines.
struct TextLayout {
    std::vector<TextLine> lines;
    /// The width of the widest line and the height of all lines.
    Size size;
    double lineHeight = 0;
    /// From the top of a line to its baseline.
    double ascent = 0;
    /// Whether the text's first strong character is written from right to left.
    bool rightToLeft = false;
};

/// Breaks and measures text, with the fonts that the host paints with. Main thread only. Equal questions have equal
/// answers, which layouts remember.
class VANTIX_EXPORT TextMeasurer {
public:
    virtual ~TextMeasurer() = default;

    /// Breaks `text` at the word boundaries of its script so that no line is wider than `maximumWidth` points (which
    /// may be infinite); a word that alone is wider is broken inside. An empty text is one empty line. Bytes that are
    /// no UTF-8 are shown as the replacement character.
    virtual TextLayout layOut(std::string_view text, const Font& font, double maximumWidth) const = 0;

    /// What of `text` would be drawn as boxes, because neither the font nor any that steps in for it has it: each
    /// character, with its marks, once, in the order of the text.
    virtual std::vector<std::string> missingCharacters(std::string_view text, const Font& font) const = 0;
};

}  // namespace vantix
