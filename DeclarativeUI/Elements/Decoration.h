#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// Layers that change neither the size nor the place of their content; see View's modifiers of these names.
View withBackground(const View& content, std::optional<Color> color);
View withCornerRadius(const View& content, double radius);
View withOverlay(const View& content, Alignment alignment, const View& overlay);

}  // namespace vantix
