#pragma once

#include "Platform/Values/Color.h"

namespace vantix {

/// What is seen where a colour is painted over an opaque one.
Color composited(const Color& over, const Color& below);

/// How well two opaque colours can be told apart: from 1, not at all, to 21, black from white. Text asks for 4.5, a
/// picture or a mark for 3.
double contrast(const Color& one, const Color& other);

/// Black or white, whichever stands out more on an opaque colour; never by less than 4.5.
Color readableColor(const Color& background);
/// A blue that says "this can be tapped" and can be read on an opaque colour; black or white where no blue can, or
/// where it would stand on a colour as strong as itself.
Color readableAccent(const Color& background);

}  // namespace vantix
