#pragma once

#include "DeclarativeUI/HostedView.h"

#include <cmath>
#include <sstream>

namespace vantix {

/// What is painted with an edge that is no edge between two device pixels; dividers that are not one pixel thick, too.
/// Empty when all is well.
inline std::string edgesBetweenPixels(const HostedView& view, double scale) {
    std::ostringstream found;
    auto isOff = [scale](double edge) { return std::abs(edge * scale - std::round(edge * scale)) > 1e-4; };
    auto outlineOf = [](const StrokeEllipse& ring) {
        double outside = -ring.lineWidth / 2;
        return ring.frame.inset({outside, outside, outside, outside});
    };
    auto expectOnGrid = [&](const Rect& frame) {
        if (!isOff(frame.minX()) && !isOff(frame.minY()) && !isOff(frame.maxX()) && !isOff(frame.maxY())) return;
        found << frame.minX() << ',' << frame.minY() << ' ' << frame.size.width << 'x' << frame.size.height << "; ";
    };
    for (const DisplayItem& item : view.displayList()) {
        if (auto fill = std::get_if<FillRect>(&item)) expectOnGrid(fill->frame);
        if (auto ellipse = std::get_if<FillEllipse>(&item)) expectOnGrid(ellipse->frame);
        if (auto image = std::get_if<DrawImage>(&item)) expectOnGrid(image->frame);
        if (auto clip = std::get_if<PushClip>(&item)) expectOnGrid(clip->frame);
        if (auto ring = std::get_if<StrokeEllipse>(&item)) expectOnGrid(outlineOf(*ring));
    }
    for (const AccessibleElement& element : view.elements()) {
        auto isPixel = [scale](double length) { return std::abs(length * scale - 1) < 1e-4; };
        const Size& size = element.frame.size;
        if (element.role == Role::divider && !isPixel(size.width) && !isPixel(size.height))
            found << "divider of " << size.width << 'x' << size.height << "; ";
    }
    return found.str();
}

}  // namespace vantix
