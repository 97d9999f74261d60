#pragma once

#include "DeclarativeUI/View.h"
#include "Platform/Values/Image.h"

namespace vantix {

/// A picture that fills the frame it is given. An empty view for a null image.
View ResizableImage(Image image);

}  // namespace vantix
