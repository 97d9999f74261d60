#pragma once

#include "Platform/Ports/FontCatalogue.h"

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

struct _FcCharSet;
struct _FcConfig;
struct _FcPattern;

namespace vantix {

/// One design of a font family. What it refers to belongs to the catalogue.
struct FontFace {
    std::string_view family;
    /// The design's own name within the family ("Semi Bold Italic"); empty for the family as a whole.
    std::string_view style;
    /// From 1 to 1000; 400 is regular, 700 bold.
    int weight = 400;
    bool italic = false;
    /// Whether its glyphs bring their own colours, as emoji do.
    bool isColored = false;
    /// Null for the family as a whole.
    const _FcCharSet* characters = nullptr;

    bool has(char32_t character) const;
};

/// The designs that share a name.
using FontFamily = std::vector<const FontFace*>;

/// The fonts that fontconfig knows.
///
/// Made after the QGuiApplication, and cheap to make: the list is read when somebody first asks, by the thread that
/// asks, and never changes afterwards. Usable from any thread.
class QtFontCatalogue final : public FontCatalogue {
public:
    QtFontCatalogue();

    bool contains(std::string_view name) const override { return find(name) != nullptr; }

    /// The face with exactly this family, full or PostScript name; null for an unknown name. A name that is both a
    /// family's and a face's means the family.
    const FontFace* find(std::string_view name) const;

    /// The designs of each family, under each of its names.
    const std::map<std::string_view, FontFamily>& families() const;

private:
    void read() const;
    void add(const _FcPattern* font) const;

    mutable std::once_flag isRead_;
    /// Owns the texts and characters of all faces.
    mutable std::shared_ptr<_FcConfig> fontconfig_;
    mutable std::deque<FontFace> faces_;
    mutable std::map<std::string_view, const FontFace*> names_;
    mutable std::map<std::string_view, FontFamily> families_;
};

}  // namespace vantix
