#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <functional>

namespace vantix {

/// Changes what everything inside the content inherits. `change` answers the same for the same environment.
ElementPointer inherited(const ElementPointer& content, std::function<void(Environment&)> change);
/// Tells the content that the colour is painted behind it.
ElementPointer standingOn(const ElementPointer& content, const Color& color);

}  // namespace vantix
