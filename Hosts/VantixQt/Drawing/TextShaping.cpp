#include "VantixQt/Drawing/TextShaping.h"

#include <QTextLayout>

namespace vantix {

namespace {

constexpr int referencePixelSize = 64;

QString toQt(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

/// `style` may be empty for the family's nearest design.
QFont qtFont(std::string_view family, std::string_view style, FontDesign design) {
    QFont font(toQt(family));
    if (!style.empty()) font.setStyleName(toQt(style));
    font.setWeight(static_cast<QFont::Weight>(design.weight));
    font.setItalic(design.italic);
    font.setPixelSize(referencePixelSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    // What a font lacks is given to others here, not by Qt, which would go through all fonts for it.
    font.setStyleStrategy(static_cast<QFont::StyleStrategy>(QFont::NoSubpixelAntialias | QFont::NoFontMerging));
    return font;
}

}  // namespace

ReferenceFont TextShaping::font(const Font& font) const {
    double scale = (font.size > 0 ? font.size : 1) / referencePixelSize;
    const FontFace* face = fallback_.ownFace(font);
    if (!face) return {qtFont({}, {}, fallback_.design(font)), scale};
    return {qtFont(face->family, face->style, fallback_.design(font)), scale};
}

void TextShaping::substituteFonts(QTextLayout& layout, const Font& font) const {
    const QString text = layout.text();
    const FontFace* own = fallback_.ownFace(font);
    QList<QTextLayout::FormatRange> formats;
    for (const auto& [start, length, face] : fallback_.runs(text, font)) {
        if (!face || face == own) continue;
        // A picture is neither thickened nor slanted.
        FontDesign design = face->isColored ? FontDesign{face->weight, face->italic} : fallback_.design(font);
        QTextLayout::FormatRange range{static_cast<int>(start), static_cast<int>(length), {}};
        range.format.setFont(qtFont(face->family, face->style, design));
        formats.push_back(range);
    }
    if (!formats.isEmpty()) layout.setFormats(formats);
}

QTextOption TextShaping::option(bool rightToLeft, QTextOption::WrapMode wrapMode) {
    QTextOption option;
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(wrapMode);
    return option;
}

}  // namespace vantix
