#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <functional>

namespace vantix {

/// Acts on touches within the content, unless something inside wants them.
ElementPointer tappable(const ElementPointer& content, std::function<void()> action);

}  // namespace vantix
