#pragma once

#include "DeclarativeUI/Layout/Element.h"

namespace vantix {

/// The content in a frame of its own, aligned.
ElementPointer framed(const ElementPointer& content, const FrameSpec& spec);

}  // namespace vantix
