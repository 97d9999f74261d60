#pragma once

#include <string_view>
#include <vector>

namespace vantix {

/// The word that someone most likely meant; empty when none is near. A difference in letter case, blanks, hyphens or
/// underscores alone counts as none.
std::string_view nearestWord(std::string_view written, const std::vector<std::string_view>& words);

}  // namespace vantix
