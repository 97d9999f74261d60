#pragma once

#include "DeclarativeUI/Layout/SettledLayout.h"

namespace vantix {

/// Lets small controls take taps on 44 by 44 points: their regions grow evenly into the room around them, as far as
/// they are in view and meet no other control, and tells each element its target. Where a control lies over another
/// one, the upper one has the taps. Cards and rows, which hold controls, neither grow nor stand in the way.
void spreadTargets(RecordedElements& recorded);

}  // namespace vantix
