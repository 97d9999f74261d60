#pragma once

#include "VantixQt/Drawing/DecodingTime.h"
#include "VantixQt/Drawing/ScanLines.h"

#include <memory>
#include <string_view>

namespace vantix {

/// The lines of a JPEG, whose bytes must outlive them, as must `time`, within which all scans are to be read. Fails if
/// the end is missing, and for more scans than any encoder writes.
Result<std::unique_ptr<ScanLines>> jpegScanLines(std::string_view bytes, const DecodingTime& time);

}  // namespace vantix
