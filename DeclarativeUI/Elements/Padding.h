#pragma once

#include "DeclarativeUI/Layout/Element.h"

namespace vantix {

/// The content with room around it. Where text runs from right to left, left and right change places when `mirrors`.
ElementPointer padded(const ElementPointer& content, const EdgeInsets& insets, bool mirrors);

}  // namespace vantix
