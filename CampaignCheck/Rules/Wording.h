#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// What an author wrote, in quotation marks, cut where it is long.
std::string quoted(std::string_view text);

/// The word that an author most likely meant, or all there are, in quotation marks.
std::string nearestOrAll(std::string_view written, const std::vector<std::string_view>& words);

/// The words that the device knows for a field of the campaign: "/body/ctas/*/type".
std::vector<std::string_view> wordsOf(std::string_view field);

}  // namespace vantix
