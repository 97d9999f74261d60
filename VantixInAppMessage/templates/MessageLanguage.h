#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// The language that the texts are written in, by its two-letter code, for what is said beside them. Told by the script
/// where it belongs to one language (Hebrew, kana, Hangul; Arabic without the letters of its neighbours), and in Latin
/// letters by the commonest words, of which one language must have two or more, and more than any other. Absent where
/// that is unsure. Only the first 4 KiB count.
std::optional<std::string> messageLanguage(std::string_view allTexts);

}  // namespace vantix
