#pragma once

#include "Platform/Values/Font.h"
#include "VantixQt/Drawing/QtFontCatalogue.h"

#include <QStringView>

#include <memory>
#include <vector>

namespace vantix {

/// A part of a text that one face draws.
struct FontRun {
    qsizetype start = 0;
    qsizetype length = 0;
    /// Null when no font has what stands here.
    const FontFace* face = nullptr;
};

/// The weight and slant that a text asks for.
struct FontDesign {
    int weight = 400;
    bool italic = false;
};

/// Chooses the face that draws each character of a text, by what the fonts say that they have.
///
/// Emoji go to a font in colour, everything else to the text's own font where it has the character. Where it has not,
/// Chinese, Japanese and Korean go to the font made for the language that the text shows itself to be in; then come
/// the system font, the one that stepped in last, and all others. Of a family the design steps in that has the
/// character and is nearest in weight and slant. Main thread only.
class FontFallback {
public:
    explicit FontFallback(std::shared_ptr<const QtFontCatalogue> catalogue) : catalogue_(std::move(catalogue)) {}

    /// What a font asks for; a named face's own weight and slant are not lessened.
    FontDesign design(const Font& font) const;

    /// The face of a text's own font: the named one's, or the system font's; null on a machine without fonts.
    const FontFace* ownFace(const Font& font) const;

    /// The whole text, in order. What is joined (a letter with its marks, a flag, a family of emoji) is never parted.
    std::vector<FontRun> runs(QStringView text, const Font& font) const;

private:
    const FontFamily& systemFamily() const;
    const FontFace* drawnBy(QStringView cluster, const FontFace* own, const FontFace* last, FontDesign design,
                            const FontFamily& cjk) const;
    const FontFamily& family(std::string_view name) const;
    /// In the order in which they are asked: those in colour, sans serif, the others.
    const std::vector<const FontFamily*>& families() const;

    std::shared_ptr<const QtFontCatalogue> catalogue_;
    mutable std::vector<const FontFamily*> families_;
};

}  // namespace vantix
