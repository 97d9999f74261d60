#pragma once

#include "DeclarativeUI/Layout/LayoutPass.h"

namespace vantix {

/// Where `length` begins in a room of that length, for the three alignments.
double leadingOffset(HorizontalAlignment alignment, double room, double length, const Environment& environment);
double topOffset(VerticalAlignment alignment, double room, double length);

/// Places the size that the view answers to the proposal into the frame, aligned.
void placeAligned(const ElementPointer& view, const Rect& frame, const Proposal& proposal, Alignment alignment,
                  const Environment& environment, LayoutPass& pass);

}  // namespace vantix
