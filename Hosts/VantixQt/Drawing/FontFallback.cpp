#include "VantixQt/Drawing/FontFallback.h"

#include "VantixQt/Drawing/TextClusters.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace vantix {

namespace {

/// What shapes its neighbours or keeps them apart has no glyph that a font would have to have.
bool needsGlyph(char32_t character) {
    switch (QChar::category(character)) {
        case QChar::Separator_Space:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
        case QChar::Other_Control:
        case QChar::Other_Format:
            return false;
        default:
            bool isVariationSelector = (character >= 0xFE00 && character <= 0xFE0F) ||  //
                                       (character >= 0xE0100 && character <= 0xE01EF);
            return !isVariationSelector;
    }
}

bool isBlank(QStringView cluster) {
    return forEachCharacter(cluster, [](char32_t character) { return !needsGlyph(character); });
}

bool hasAll(const FontFace& face, QStringView cluster) {
    return forEachCharacter(cluster, [&](char32_t character) { return !needsGlyph(character) || face.has(character); });
}

/// Whether one face draws it all and nothing in it is a picture: so it is with most texts.
bool isPlain(QStringView text, const FontFace& face) {
    return std::all_of(text.begin(), text.end(), [&face](QChar unit) {
        return unit.unicode() < 0x2000 && (face.has(unit.unicode()) || !needsGlyph(unit.unicode()));
    });
}

/// The nearest design, of those that have all characters.
const FontFace* nearest(const FontFamily& family, FontDesign design, QStringView cluster) {
    auto distance = [design](const FontFace& face) {
        return std::pair(face.italic != design.italic, std::abs(face.weight - design.weight));
    };
    const FontFace* best = nullptr;
    for (const FontFace* face : family) {
        if ((!best || distance(*face) < distance(*best)) && hasAll(*face, cluster)) best = face;
    }
    return best;
}

/// The same ideographs are written differently in each language; kana and hangul tell which it is.
std::string_view cjkFamilyName(QStringView text) {
    std::string_view name = "Noto Sans CJK SC";
    forEachCharacter(text, [&name](char32_t character) {
        switch (QChar::script(character)) {
            case QChar::Script_Hiragana:
            case QChar::Script_Katakana:
                name = "Noto Sans CJK JP";
                return false;
            case QChar::Script_Hangul:
                name = "Noto Sans CJK KR";
                return false;
            case QChar::Script_Bopomofo:
                name = "Noto Sans CJK TC";
                return false;
            default:
                return true;
        }
    });
    return name;
}

bool isSansSerif(std::string_view name) { return name.starts_with("Noto Sans") && !name.starts_with("Noto Sans Mono"); }

}  // namespace

FontDesign FontFallback::design(const Font& font) const {
    FontDesign design{font.weight == FontWeight::bold ? 700 : 400, font.italic};
    if (const FontFace* named = font.name.empty() ? nullptr : catalogue_->find(font.name)) {
        design = {std::max(design.weight, named->weight), design.italic || named->italic};
    }
    return design;
}

const FontFace* FontFallback::ownFace(const Font& font) const {
    const FontFace* named = font.name.empty() ? nullptr : catalogue_->find(font.name);
    FontDesign asked = design(font);
    if (named && asked.weight == named->weight && asked.italic == named->italic && named->characters) return named;
    return nearest(named ? family(named->family) : systemFamily(), asked, {});
}

std::vector<FontRun> FontFallback::runs(QStringView text, const Font& font) const {
    const FontFace* own = ownFace(font);
    if (own && isPlain(text, *own)) return {{0, text.size(), own}};
    const FontFace* last = nullptr;
    const FontDesign asked = design(font);
    const FontFamily& cjk = family(cjkFamilyName(text));
    std::vector<FontRun> runs;
    forEachCluster(text, [&](QStringView cluster) {
        // Blanks go with what stands before them, as the spaces of a script are made for its letters.
        bool goesOn = last && !last->isColored && isBlank(cluster);
        const FontFace* face = goesOn ? last : drawnBy(cluster, own, last, asked, cjk);
        if (runs.empty() || runs.back().face != face) runs.push_back({cluster.data() - text.data(), 0, face});
        runs.back().length += cluster.size();
        if (face) last = face;
    });
    return runs;
}

const FontFace* FontFallback::drawnBy(QStringView cluster, const FontFace* own, const FontFace* last, FontDesign design,
                                      const FontFamily& cjk) const {
    if (isEmoji(cluster)) {
        for (const FontFamily* colored : families()) {
            if (!colored->front()->isColored) break;
            if (const FontFace* face = nearest(*colored, design, cluster)) return face;
        }
    }
    if (own && hasAll(*own, cluster)) return own;
    if (isCJK(cluster)) {
        if (const FontFace* face = nearest(cjk, design, cluster)) return face;
    }
    if (const FontFace* face = nearest(systemFamily(), design, cluster)) return face;
    if (last && hasAll(*last, cluster)) return last;
    for (const FontFamily* family : families()) {
        if (const FontFace* face = nearest(*family, design, cluster)) return face;
    }
    return nullptr;
}

const FontFamily& FontFallback::systemFamily() const {
    for (const char* name : {"Inter", "DejaVu Sans"}) {
        if (const FontFamily& found = family(name); !found.empty()) return found;
    }
    return families().empty() ? family({}) : *families().back();
}

const FontFamily& FontFallback::family(std::string_view name) const {
    static const auto& none = *new FontFamily;
    auto found = catalogue_->families().find(name);
    return found == catalogue_->families().end() ? none : found->second;
}

const std::vector<const FontFamily*>& FontFallback::families() const {
    if (!families_.empty()) return families_;
    using Rank = std::tuple<bool, bool, std::size_t, std::string_view>;
    std::vector<std::pair<Rank, const FontFamily*>> ranked;
    for (const auto& [name, family] : catalogue_->families()) {
        ranked.push_back({{!family.front()->isColored, !isSansSerif(name), name.size(), name}, &family});
    }
    std::sort(ranked.begin(), ranked.end());
    for (const auto& [rank, family] : ranked) families_.push_back(family);
    return families_;
}

}  // namespace vantix
