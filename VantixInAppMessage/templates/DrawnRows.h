#pragma once

#include <string>
#include <vector>

namespace vantix {

/// The first of the texts, as many as are drawn as rows of their own: 200, and 16 KiB of text. More would hold up the
/// main thread and serve nobody.
std::vector<std::string> drawnRows(std::vector<std::string> texts);

}  // namespace vantix
