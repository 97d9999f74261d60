#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// Takes what its stack leaves along the stack's axis, at least `minLength` points.
View Spacer(double minLength = 0);

}  // namespace vantix
