#pragma once

#include "DeclarativeUI/View.h"
#include "Platform/Values/Image.h"

#include <string_view>

namespace vantix {

/// The drawing of a system symbol ("star.fill", "square", "checkmark.square.fill"); a null image for an unknown name.
/// Main thread only.
Image systemSymbol(std::string_view systemName);

/// A picture as a symbol: tinted with the foreground colour, its size follows the font. An empty view for a null image.
View SymbolImage(Image drawing);
/// A system symbol.
View SymbolImage(std::string_view systemName);

}  // namespace vantix
