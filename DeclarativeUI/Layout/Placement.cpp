#include "DeclarativeUI/Layout/Placement.h"

#include <algorithm>

namespace vantix {

Rect intersection(const Rect& a, const Rect& b) {
    double left = std::max(a.minX(), b.minX());
    double top = std::max(a.minY(), b.minY());
    return {{left, top},
            {std::max(0.0, std::min(a.maxX(), b.maxX()) - left), std::max(0.0, std::min(a.maxY(), b.maxY()) - top)}};
}

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

void placeAligned(const View& view, const Rect& frame, const Proposal& proposal, Alignment alignment,
                  const Environment& environment, LayoutPass& pass) {
    Size size = pass.measure(view, proposal, environment);
    pass.place(view,
               {{frame.minX() + leadingOffset(alignment.horizontal, frame.size.width, size.width, environment),
                 frame.minY() + topOffset(alignment.vertical, frame.size.height, size.height)},
                size},
               proposal, environment);
}

}  // namespace vantix
