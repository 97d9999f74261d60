#pragma once

#include "Platform/TextMeasurer.h"
#include "Platform/UTF8.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// Measures every character alike, so that a test can tell by hand how a text is laid out: 10 characters of a 20-point
/// font are 100 points wide, and each of their lines is 24 points high with its baseline 20 points below its top.
///
/// Lines break at blanks and line breaks, and inside a word that is longer than a line.
class FixedTextMeasurer final : public TextMeasurer {
public:
    /// As parts of the font's size.
    static constexpr double characterWidth = 0.5;
    static constexpr double lineHeight = 1.2;
    static constexpr double ascent = 1;

    TextLayout layOut(std::string_view text, const Font& font, double maximumWidth) const override {
        ++layoutCount_;
        double character = font.size * characterWidth;
        double perLine = std::max(1.0, std::floor(maximumWidth / character + 1e-9));

        TextLayout layout;
        layout.rightToLeft = isRightToLeft(text);
        std::string repaired = repairUTF8(text);
        std::string_view rest = repaired;
        for (bool isLast = false; !isLast;) {
            std::size_t end = rest.find('\n');
            isLast = end == std::string_view::npos;
            addParagraph(rest.substr(0, end), perLine, character, layout);
            if (!isLast) rest.remove_prefix(end + 1);
        }
        for (const TextLine& line : layout.lines) layout.size.width = std::max(layout.size.width, line.width);
        layout.lineHeight = font.size * lineHeight;
        layout.size.height = layout.lineHeight * static_cast<double>(layout.lines.size());
        layout.ascent = font.size * ascent;
        return layout;
    }

    /// How often a text was laid out, for tests of what is measured again.
    int layoutCount() const { return layoutCount_; }

private:
    static void addParagraph(std::string_view paragraph, double perLine, double character, TextLayout& layout) {
        std::vector<std::size_t> starts = characterStarts(paragraph);
        std::size_t count = starts.size() - 1;
        std::size_t first = 0;
        do {
            auto room = static_cast<std::size_t>(std::min(perLine, static_cast<double>(count - first)));
            std::size_t end = lineEnd(paragraph, starts, first, first + room);
            std::string_view line = paragraph.substr(starts[first], starts[end] - starts[first]);
            first = end;
            while (first < count && paragraph[starts[first]] == ' ') ++first;
            while (!line.empty() && line.back() == ' ') line.remove_suffix(1);
            layout.lines.push_back({std::string(line), character * static_cast<double>(charactersIn(line))});
        } while (first < count);
    }

    /// The last blank up to `limit`, or `limit` itself where the word is longer than the line or the paragraph ends.
    static std::size_t lineEnd(std::string_view paragraph, const std::vector<std::size_t>& starts, std::size_t first,
                               std::size_t limit) {
        if (limit + 1 == starts.size()) return limit;
        for (std::size_t end = limit; end > first; --end) {
            if (paragraph[starts[end]] == ' ') return end;
        }
        return limit;
    }

    static bool isStart(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

    static std::ptrdiff_t charactersIn(std::string_view text) {
        return std::count_if(text.begin(), text.end(), isStart);
    }

    /// Where each character begins, and where the last one ends.
    static std::vector<std::size_t> characterStarts(std::string_view text) {
        std::vector<std::size_t> starts;
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (isStart(text[at])) starts.push_back(at);
        }
        starts.push_back(text.size());
        return starts;
    }

    mutable int layoutCount_ = 0;
};

}  // namespace vantix
