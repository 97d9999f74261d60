#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// Reaches beyond the safe area, to the window's edge, where it touches the edge of the safe area.
View ignoringSafeArea(const View& content, Edge edges);

}  // namespace vantix
