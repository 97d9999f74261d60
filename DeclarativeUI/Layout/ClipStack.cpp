#include "DeclarativeUI/Layout/ClipStack.h"

namespace vantix {

bool ClipStack::isVisible(const Rect& frame) const {
    const Rect& visible = clips_.back().visible;
    return frame.maxX() >= visible.minX() && frame.minX() <= visible.maxX() && frame.maxY() >= visible.minY() &&
           frame.minY() <= visible.maxY();
}

double ClipStack::cornerRadiusOf(const Rect& frame) const {
    return clips_.back().frame == frame ? clips_.back().cornerRadius : 0;
}

}  // namespace vantix
