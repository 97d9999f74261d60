#pragma once

#include <string>

namespace vantix {

/// All that a file holds; "-" is standard input. Throws BadInput, with the place, when it cannot be read.
std::string readInputFile(const std::string& file);

}  // namespace vantix
