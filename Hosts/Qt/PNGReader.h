#pragma once

#include "Platform/Result.h"

#include <QImage>
#include <QSize>

#include <string_view>

namespace vantix {

/// Reads PNG pictures with libpng itself: under Qt's reader, libpng writes what it finds wrong to standard error.
namespace PNGReader {

/// Reads the header only.
Result<QSize> size(std::string_view bytes);

/// All pixels, in sRGB with straight alpha.
Result<QImage> read(std::string_view bytes);

}  // namespace PNGReader

}  // namespace vantix
