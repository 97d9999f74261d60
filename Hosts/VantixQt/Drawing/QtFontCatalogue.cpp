#include "VantixQt/Drawing/QtFontCatalogue.h"

#include "VantixQt/Drawing/RequiredApplication.h"

#include <fontconfig/fontconfig.h>

#include <memory>
#include <optional>

namespace vantix {

namespace {

struct FontconfigDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcObjectSet* objects) const { FcObjectSetDestroy(objects); }
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
};

template <typename T>
using FontconfigPointer = std::unique_ptr<T, FontconfigDeleter>;

std::optional<std::string> text(const FcPattern* pattern, const char* property, int index) {
    FcChar8* value = nullptr;
    if (FcPatternGetString(pattern, property, index, &value) != FcResultMatch) return std::nullopt;
    return reinterpret_cast<const char*>(value);
}

int number(const FcPattern* pattern, const char* property, int standard) {
    int value = standard;
    FcPatternGetInteger(pattern, property, 0, &value);
    return value;
}

FontFace face(const FcPattern* pattern) {
    int weight = FcWeightToOpenType(number(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR));
    bool italic = number(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
    return {text(pattern, FC_FAMILY, 0).value_or(""), text(pattern, FC_STYLE, 0).value_or(""), weight, italic};
}

/// A font bears a name of each kind once for each of its languages.
template <typename Visit>
void forEachName(const FcPattern* pattern, const char* kind, Visit visit) {
    for (int index = 0; auto name = text(pattern, kind, index); ++index) visit(*name);
}

FontconfigPointer<FcFontSet> listFonts() {
    FontconfigPointer<FcPattern> everything(FcPatternCreate());
    FontconfigPointer<FcObjectSet> properties(FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_FULLNAME, FC_POSTSCRIPT_NAME,
                                                               FC_WEIGHT, FC_SLANT, static_cast<char*>(nullptr)));
    return FontconfigPointer<FcFontSet>(FcFontList(nullptr, everything.get(), properties.get()));
}

}  // namespace

QtFontCatalogue::QtFontCatalogue() { requireApplication("QtFontCatalogue"); }

const FontFace* QtFontCatalogue::find(std::string_view name) const {
    std::call_once(read_, [this] {
        auto fonts = listFonts();
        if (!fonts) return;
        for (int index = 0; index < fonts->nfont; ++index) {
            const FcPattern* font = fonts->fonts[index];
            forEachName(font, FC_FAMILY, [&](const std::string& family) { faces_[family] = {family, {}}; });
            auto add = [&](const std::string& faceName) { faces_.try_emplace(faceName, face(font)); };
            forEachName(font, FC_FULLNAME, add);
            forEachName(font, FC_POSTSCRIPT_NAME, add);
        }
    });
    auto found = faces_.find(name);
    return found == faces_.end() ? nullptr : &found->second;
}

}  // namespace vantix
