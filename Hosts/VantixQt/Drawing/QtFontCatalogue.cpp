#include "VantixQt/Drawing/QtFontCatalogue.h"

#include "VantixQt/Drawing/RequiredApplication.h"

#include <QtDebug>
#include <fontconfig/fontconfig.h>

#include <optional>

namespace vantix {

namespace {

std::optional<std::string_view> text(const FcPattern* pattern, const char* property, int index) {
    FcChar8* value = nullptr;
    if (FcPatternGetString(pattern, property, index, &value) != FcResultMatch) return std::nullopt;
    return reinterpret_cast<const char*>(value);
}

int number(const FcPattern* pattern, const char* property, int standard) {
    int value = standard;
    FcPatternGetInteger(pattern, property, 0, &value);
    return value;
}

bool isTrue(const FcPattern* pattern, const char* property) {
    FcBool value = FcFalse;
    return FcPatternGetBool(pattern, property, 0, &value) == FcResultMatch && value == FcTrue;
}

const FcCharSet* characters(const FcPattern* pattern) {
    FcCharSet* value = nullptr;
    FcPatternGetCharSet(pattern, FC_CHARSET, 0, &value);
    return value;
}

FontFace face(const FcPattern* pattern) {
    return {.family = text(pattern, FC_FAMILY, 0).value_or(""),
            .style = text(pattern, FC_STYLE, 0).value_or(""),
            .weight = FcWeightToOpenType(number(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR)),
            .italic = number(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN,
            .isColored = isTrue(pattern, FC_COLOR),
            .characters = characters(pattern)};
}

/// A font bears a name of each kind once for each of its languages.
template <typename Visit>
void forEachName(const FcPattern* pattern, const char* kind, Visit visit) {
    for (int index = 0; auto name = text(pattern, kind, index); ++index) visit(*name);
}

}  // namespace

QtFontCatalogue::QtFontCatalogue() { requireApplication("QtFontCatalogue"); }

bool FontFace::has(char32_t character) const { return characters && FcCharSetHasChar(characters, character); }

const FontFace* QtFontCatalogue::find(std::string_view name) const {
    read();
    auto found = names_.find(name);
    return found == names_.end() ? nullptr : found->second;
}

const std::map<std::string_view, FontFamily>& QtFontCatalogue::families() const {
    read();
    return families_;
}

void QtFontCatalogue::read() const {
    std::call_once(isRead_, [this] {
        fontconfig_ = {FcConfigReference(nullptr), FcConfigDestroy};
        if (!fontconfig_) return;
        for (FcSetName set : {FcSetSystem, FcSetApplication}) {
            const FcFontSet* fonts = FcConfigGetFonts(fontconfig_.get(), set);
            for (int index = 0; fonts && index < fonts->nfont; ++index) add(fonts->fonts[index]);
        }
        if (faces_.empty()) qCritical("There is no font on this machine: texts are painted as boxes");
    });
}

void QtFontCatalogue::add(const FcPattern* font) const {
    const FontFace* design = &faces_.emplace_back(face(font));
    forEachName(font, FC_FAMILY, [&](std::string_view name) {
        FontFamily& family = families_[name];
        if (family.empty()) names_[name] = &faces_.emplace_back(FontFace{name, {}});
        family.push_back(design);
    });
    auto addName = [&](std::string_view name) { names_.try_emplace(name, design); };
    forEachName(font, FC_FULLNAME, addName);
    forEachName(font, FC_POSTSCRIPT_NAME, addName);
}

}  // namespace vantix
