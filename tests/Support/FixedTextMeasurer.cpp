#include "tests/Support/FixedTextMeasurer.h"

#include "Platform/Values/UTF8.h"

#include <algorithm>
#include <cmath>

namespace vantix {

namespace {

bool beginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

/// As many characters as fit.
std::string_view prefix(std::string_view text, double capacity) {
    double taken = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (beginsCharacter(text[at]) && ++taken > capacity) return text.substr(0, at);
    }
    return text;
}

std::string_view withoutTrailingBlanks(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

/// Cuts the first line off the rest of its paragraph.
std::string_view takeLine(std::string_view& rest, double capacity) {
    std::string_view line = prefix(rest, capacity);
    if (line.size() < rest.size() && rest[line.size()] != ' ') {
        auto blank = line.rfind(' ');
        if (blank != std::string_view::npos && blank > 0) line = line.substr(0, blank);
    }
    rest.remove_prefix(std::min(rest.size(), rest.find_first_not_of(' ', line.size())));
    return withoutTrailingBlanks(line);
}

}  // namespace

TextLayout FixedTextMeasurer::layOut(std::string_view text, const Font& font, double maximumWidth) const {
    const double characterWidth = font.size / 2;
    const double capacity = std::max(1.0, std::floor(maximumWidth / characterWidth + 1e-9));
    const std::string repaired = repairUTF8(text);

    TextLayout layout;
    layout.lineHeight = font.size * 1.2;
    layout.ascent = font.size;
    layout.rightToLeft = isRightToLeft(text);
    for (std::size_t start = 0; start <= repaired.size();) {
        std::size_t end = std::min(repaired.find('\n', start), repaired.size());
        std::string_view paragraph = std::string_view(repaired).substr(start, end - start);
        do {
            std::string_view line = takeLine(paragraph, capacity);
            layout.lines.push_back({std::string(line), static_cast<double>(characters(line)) * characterWidth});
            layout.size.width = std::max(layout.size.width, layout.lines.back().width);
        } while (!paragraph.empty());
        start = end + 1;
    }
    layout.size.height = layout.lineHeight * static_cast<double>(layout.lines.size());
    return layout;
}

}  // namespace vantix
