#pragma once

#include "Platform/Values/Font.h"
#include "VantixQt/Drawing/FontFallback.h"

#include <QFont>
#include <QTextOption>

#include <memory>

class QTextLayout;

namespace vantix {

/// A font at the size at which all text is shaped, and the factor that brings it to the size that was asked for.
struct ReferenceFont {
    QFont font;
    double scale = 1;
};

/// How a font and a line of text are given to Qt: the same way for measuring as for painting.
///
/// All text is shaped unhinted at one reference size and scaled: a text breaks at the same places at every size and at
/// every number of pixels per point, and fractional sizes are exact. Main thread only.
class TextShaping {
public:
    explicit TextShaping(std::shared_ptr<const QtFontCatalogue> catalogue) : fallback_(std::move(catalogue)) {}

    /// An empty or unknown name is the system font; a size of 0 and below is 1.
    ReferenceFont font(const Font& font) const;

    /// Gives what the layout's font, made for `font`, does not draw to the fonts that do.
    void substituteFonts(QTextLayout& layout, const Font& font) const;

    const FontFallback& fallback() const { return fallback_; }

    static QTextOption option(bool rightToLeft, QTextOption::WrapMode wrapMode);

private:
    FontFallback fallback_;
};

}  // namespace vantix
