#pragma once

#include "VantixQt/Drawing/ScanLines.h"

#include <memory>
#include <string_view>

namespace vantix {

/// The lines of the first picture of a GIF, whose bytes must outlive them. Fails if that picture's end is missing.
Result<std::unique_ptr<ScanLines>> gifScanLines(std::string_view bytes);

}  // namespace vantix
