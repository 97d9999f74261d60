#pragma once

#include "Platform/Values/Color.h"
#include "Platform/Values/Geometry.h"

#include <QColor>
#include <QPointF>
#include <QRectF>

namespace vantix {

inline QPointF toQt(Point point) { return {point.x, point.y}; }

inline QRectF toQt(const Rect& rect) { return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height}; }

inline QColor toQt(const Color& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

}  // namespace vantix
