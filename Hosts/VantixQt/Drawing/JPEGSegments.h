#pragma once

#include "VantixQt/Drawing/ScanLines.h"

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// What stands beside the pixels of a JPEG.
struct JPEGSegments {
    int scanCount = 0;
    Orientation orientation;
    /// The colour profile; empty if there is none.
    std::string profile;
};

/// Walks once over the bytes. Absent if they do not reach to the end of the picture.
std::optional<JPEGSegments> jpegSegments(std::string_view bytes);

}  // namespace vantix
