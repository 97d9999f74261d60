#include "DeclarativeUI/Layout/Placement.h"

namespace vantix {

double leadingOffset(HorizontalAlignment alignment, double room, double length, const Environment& environment) {
    double rest = room - length;
    if (alignment == HorizontalAlignment::center) return rest / 2;
    bool isAtLeft = (alignment == HorizontalAlignment::leading) != environment.isRightToLeft();
    return isAtLeft ? 0 : rest;
}

double topOffset(VerticalAlignment alignment, double room, double length) {
    double rest = room - length;
    if (alignment == VerticalAlignment::center) return rest / 2;
    return alignment == VerticalAlignment::top ? 0 : rest;
}

void placeAligned(const ElementPointer& view, const Rect& frame, const Proposal& proposal, Alignment alignment,
                  const Environment& environment, LayoutPass& pass) {
    Size size = pass.measure(view, proposal, environment);
    pass.place(view,
               {{frame.minX() + leadingOffset(alignment.horizontal, frame.size.width, size.width, environment),
                 frame.minY() + topOffset(alignment.vertical, frame.size.height, size.height)},
                size},
               proposal, environment);
}

}  // namespace vantix
