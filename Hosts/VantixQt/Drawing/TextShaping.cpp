#include "VantixQt/Drawing/TextShaping.h"

#include "VantixQt/Drawing/QtFontCatalogue.h"

#include <QStringList>

#include <algorithm>

namespace vantix {

namespace {

constexpr int referencePixelSize = 64;

/// The system font, then those that have the characters it lacks.
QStringList systemFamilies() { return {"Inter", "DejaVu Sans", "Droid Sans Fallback"}; }

}  // namespace

ReferenceFont TextShaping::font(const Font& font) const {
    QFont result;
    QStringList families = systemFamilies();
    int weight = font.weight == FontWeight::bold ? QFont::Bold : QFont::Normal;
    bool italic = font.italic;
    const FontFace* face = font.name.empty() ? nullptr : catalogue_->find(font.name);
    if (face) {
        families.prepend(QString::fromStdString(face->family));
        bool isItself = weight <= face->weight && italic <= face->italic;
        if (isItself) result.setStyleName(QString::fromStdString(face->style));
        weight = std::max(weight, face->weight);
        italic = italic || face->italic;
    }
    result.setFamilies(families);
    result.setWeight(static_cast<QFont::Weight>(weight));
    result.setItalic(italic);
    result.setPixelSize(referencePixelSize);
    result.setHintingPreference(QFont::PreferNoHinting);
    result.setStyleStrategy(QFont::NoSubpixelAntialias);
    return {result, (font.size > 0 ? font.size : 1) / referencePixelSize};
}

QTextOption TextShaping::option(bool rightToLeft, QTextOption::WrapMode wrapMode) {
    QTextOption option;
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(wrapMode);
    return option;
}

}  // namespace vantix
