#pragma once

#include <string>

namespace vantix {

enum class FontWeight { regular, bold };

/// Describes a font; whether it exists is the FontCatalogue's knowledge.
struct Font {
    /// Family, full or PostScript name; empty means the system font.
    std::string name;
    /// Points. Values of 0 and below are kept here and drawn at 1 point.
    double size = 16;
    FontWeight weight = FontWeight::regular;
    bool italic = false;

    bool operator==(const Font&) const = default;

    static Font system(double size, FontWeight weight = FontWeight::regular) { return {{}, size, weight, false}; }
    static Font italicSystem(double size) { return {{}, size, FontWeight::regular, true}; }
    static Font named(std::string name, double size) { return {std::move(name), size, FontWeight::regular, false}; }
};

}  // namespace vantix
