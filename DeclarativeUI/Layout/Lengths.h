#pragma once

#include "Platform/Values/Geometry.h"

namespace vantix {

/// A length with which layout can count: no longer than any screen, 0 for what is no number.
double bounded(double length);
EdgeInsets bounded(const EdgeInsets& insets);
/// The same, and no size is less than nothing.
Size bounded(Size size);

}  // namespace vantix
