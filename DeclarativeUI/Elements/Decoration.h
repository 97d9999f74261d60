#pragma once

#include "DeclarativeUI/Layout/Element.h"

namespace vantix {

/// Layers that change neither the size nor the place of their content; see View's modifiers of these names.
ElementPointer withBackground(const ElementPointer& content, std::optional<Color> color);
ElementPointer withCornerRadius(const ElementPointer& content, double radius);
ElementPointer withOverlay(const ElementPointer& content, Alignment alignment, const ElementPointer& overlay);

}  // namespace vantix
