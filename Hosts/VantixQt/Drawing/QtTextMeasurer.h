#pragma once

#include "Platform/Ports/TextMeasurer.h"
#include "VantixQt/Drawing/TextShaping.h"

namespace vantix {

/// Breaks and measures text with Qt's text layout.
///
/// A line's text ends before the blanks at its end, which have no width either. All lines of a text are equally high:
/// as high as the asked font's, or as the highest of the fonts that step in for characters it lacks. A line holds at
/// most 4096 UTF-16 units. Main thread only.
class QtTextMeasurer final : public TextMeasurer {
public:
    /// The QGuiApplication exists.
    explicit QtTextMeasurer(std::shared_ptr<const QtFontCatalogue> catalogue);

    TextLayout layOut(std::string_view text, const Font& font, double maximumWidth) const override;

private:
    TextShaping shaping_;
};

}  // namespace vantix
