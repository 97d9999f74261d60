#pragma once

#include "Platform/Ports/FontCatalogue.h"

#include <map>
#include <mutex>
#include <string>

namespace vantix {

/// One design of a font family.
struct FontFace {
    std::string family;
    /// The design's own name within the family ("Semi Bold Italic"); empty for the family as a whole.
    std::string style;
    /// From 1 to 1000; 400 is regular, 700 bold.
    int weight = 400;
    bool italic = false;
};

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

private:
    using Faces = std::map<std::string, FontFace, std::less<>>;

    mutable std::once_flag read_;
    mutable Faces faces_;
};

}  // namespace vantix
