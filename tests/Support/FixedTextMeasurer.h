#pragma once

#include "Platform/Ports/TextMeasurer.h"

namespace vantix {

/// A measurer whose answers can be worked out by hand: every character is half the font size wide, a line 1.2 times the
/// font size high, with the baseline one font size below its top. Breaks at blanks, and inside words that are too long.
class FixedTextMeasurer : public TextMeasurer {
public:
    TextLayout layOut(std::string_view text, const Font& font, double maximumWidth) const override;
    std::vector<std::string> missingCharacters(std::string_view, const Font&) const override { return {}; }
};

}  // namespace vantix
