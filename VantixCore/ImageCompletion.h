#pragma once

#include "Platform/Values/Image.h"
#include "Platform/Values/Result.h"
#include "VantixCore/ImageError.h"

#include <functional>
#include <memory>
#include <string>

namespace vantix {

/// The encoded bytes of an image; never null.
using ImageData = std::shared_ptr<const std::string>;

using ImageDataCompletion = std::function<void(const Result<ImageData, ImageError>&)>;
using ImageCompletion = std::function<void(const Result<Image, ImageError>&)>;

}  // namespace vantix
