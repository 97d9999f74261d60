#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// The content in a frame of its own, aligned.
View framed(const View& content, const FrameSpec& spec);

}  // namespace vantix
