#pragma once

#include "VantixQt/Drawing/ScanLines.h"

#include <memory>
#include <string_view>

namespace vantix {

/// The lines of a PNG, whose bytes must outlive them. Only the chunks that pixels or their colours depend on are read;
/// texts and their like, however much they would inflate to, are passed over. Fails if the end is missing or a checksum
/// is wrong.
Result<std::unique_ptr<ScanLines>> pngScanLines(std::string_view bytes);

}  // namespace vantix
