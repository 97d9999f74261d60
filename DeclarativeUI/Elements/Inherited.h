#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <functional>

namespace vantix {

/// Changes what everything inside the content inherits. `change` answers the same for the same environment.
ElementPointer inherited(const ElementPointer& content, std::function<void(Environment&)> change);

}  // namespace vantix
