#pragma once

#include "DeclarativeUI/Layout/Element.h"

namespace vantix {

/// Reaches beyond the safe area, to the window's edge, where it touches the edge of the safe area.
ElementPointer ignoringSafeArea(const ElementPointer& content, Edge edges);

}  // namespace vantix
