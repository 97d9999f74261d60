#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// Shapes take all that is offered; circles as much of it as is round.
View ColorRectangle(Color color);
View FilledCircle(Color color);
/// The line runs inside the circle's edge, at least one whole pixel wide, and never wider than the circle.
View StrokedCircle(Color color, double lineWidth = 1);

}  // namespace vantix
