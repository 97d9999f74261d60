#pragma once

#include "Platform/Values/Export.h"

#include <map>
#include <string>

namespace vantix {

/// What assistive technology says beside the texts of a message, in one language.
struct SpokenWords {
    // Names of what shows no text.
    std::string close;
    std::string rating;
    std::string star;
    // Kinds.
    std::string heading;
    std::string image;
    std::string button;
    std::string radioButton;
    std::string checkBox;
    std::string adjustable;
    std::string dialog;
    // States.
    std::string selected;
    std::string notSelected;
    std::string checked;
    std::string notChecked;
    /// A place among several: "#1 of #2".
    std::string place;
};

/// By two-letter code of the language (ISO 639-1).
using SpokenWordTable = std::map<std::string, SpokenWords>;

/// The words that are known here: English, German, French, Spanish, Italian, Portuguese, Dutch, Arabic, Hebrew,
/// Japanese and Korean.
VANTIX_EXPORT const SpokenWordTable& knownSpokenWords();

/// The words of the language, or of the other one, or English ones; empty when the table has none of them.
VANTIX_EXPORT SpokenWords spokenWords(const SpokenWordTable& table, const std::string& language,
                                      const std::string& otherwise);

}  // namespace vantix
