#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <functional>
#include <string>

namespace vantix {

/// Tells of the content's size after each layout that changed it.
ElementPointer observed(const ElementPointer& content, std::string key, std::function<void(Size)> action);

}  // namespace vantix
