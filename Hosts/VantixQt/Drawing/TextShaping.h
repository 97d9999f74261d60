#pragma once

#include "Platform/Values/Font.h"

#include <QFont>
#include <QTextOption>

#include <memory>

namespace vantix {

class QtFontCatalogue;

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
    explicit TextShaping(std::shared_ptr<const QtFontCatalogue> catalogue) : catalogue_(std::move(catalogue)) {}

    /// An empty or unknown name is the system font; a size of 0 and below is 1.
    ReferenceFont font(const Font& font) const;

    static QTextOption option(bool rightToLeft, QTextOption::WrapMode wrapMode);

private:
    std::shared_ptr<const QtFontCatalogue> catalogue_;
};

}  // namespace vantix
