#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// A line one device pixel thick across the stack, drawn lightly over its background.
View Divider();

}  // namespace vantix
