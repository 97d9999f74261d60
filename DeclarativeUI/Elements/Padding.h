#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// The content with room around it. Where text runs from right to left, left and right change places when `mirrors`.
View padded(const View& content, const EdgeInsets& insets, bool mirrors);

}  // namespace vantix
