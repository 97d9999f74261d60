#pragma once

#include "Platform/Values/Image.h"

namespace vantix {

/// A picture that arrives later. Asked during layout and painting on the main thread.
class ImageSource {
public:
    virtual ~ImageSource() = default;
    /// The picture to draw now: the real one or a placeholder; null while there is neither.
    virtual Image currentImage() const = 0;
    /// Told after each layout how many pixels the picture covers, so that it can be decoded at that size.
    virtual void needed(int pixelWidth, int pixelHeight) = 0;
};

}  // namespace vantix
