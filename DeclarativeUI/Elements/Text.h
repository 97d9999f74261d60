#pragma once

#include "DeclarativeUI/View.h"

#include <string>

namespace vantix {

/// A text in any script; wraps over as many lines as it needs, up to 16 KiB of text; an ellipsis stands for the rest.
/// Default colour black, default font the 16-point system font.
View Text(std::string text);

}  // namespace vantix
