#pragma once

#include "Platform/Values/URL.h"
#include "VantixCore/ImageCompletion.h"

namespace vantix {

class Pace;

/// The bytes of an image, as the module fetches them; it keeps them in its cache. The pace comes to its end first. A
/// simulation is running.
Result<ImageData, ImageError> fetchImage(const URL& url, Pace& pace);

}  // namespace vantix
