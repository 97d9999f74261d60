#pragma once

#include "Platform/Ports/ImageDecoder.h"
#include "Platform/Values/Image.h"

#include <optional>

namespace vantix {

/// A decoded picture with no more than `bound` pixels, as if it had been decoded so: never enlarged, in its shape.
/// Absent when that asks for more pixels than the picture was decoded with. Takes time in proportion to them.
std::optional<Image> reduced(const Image& picture, PixelSize bound);

}  // namespace vantix
