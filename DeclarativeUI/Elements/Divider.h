#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// A line one device pixel thick across the stack, black unless it is given another colour.
View Divider();

}  // namespace vantix
