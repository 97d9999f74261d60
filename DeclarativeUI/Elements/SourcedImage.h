#pragma once

#include "DeclarativeUI/ImageSource.h"
#include "DeclarativeUI/View.h"

#include <memory>
#include <optional>

namespace vantix {

/// A picture from a source, as wide as is offered and, where the height is open, as high as its aspect ratio asks
/// (`aspectRatio`, width by height, replaces the picture's own). Scaled to fit its frame, with rounded corners. A
/// source without a picture draws nothing.
View SourcedImage(std::shared_ptr<ImageSource> source, std::optional<double> aspectRatio = {}, double cornerRadius = 0);

}  // namespace vantix
