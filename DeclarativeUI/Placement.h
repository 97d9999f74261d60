#pragma once

#include "DeclarativeUI/Element.h"
#include "DeclarativeUI/LayoutPass.h"

namespace vantix {

/// Where `length` begins in a room of that length, for the three alignments.
double leadingOffset(HorizontalAlignment alignment, double room, double length, const Environment& environment);
double topOffset(VerticalAlignment alignment, double room, double length);

/// Offers the whole frame to the view and places it there, aligned.
void placeAligned(const View& view, const Rect& frame, Alignment alignment, const Environment& environment,
                  LayoutPass& pass);

}  // namespace vantix
