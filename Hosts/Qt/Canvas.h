#pragma once

#include "DeclarativeUI/DisplayList.h"
#include "Platform/Color.h"
#include "Platform/Geometry.h"
#include "Platform/Result.h"

#include <QImage>

#include <optional>
#include <string>

namespace vantix {

class DisplayListPainter;

/// A picture of a screen in memory. Main thread only.
class Canvas {
public:
    /// `size` in points; transparent at first. `scale` is pixels per point.
    Canvas(Size size, double scale);

    /// Paints over everything so far.
    void fill(const Color& color);

    /// Paints a list over everything so far, as one layer of this opacity (0 to 1).
    void paint(const DisplayList& list, DisplayListPainter& painter, double alpha = 1);

    const QImage& image() const { return image_; }

    /// Writes a PNG file over whatever stands there. Returns what went wrong.
    [[nodiscard]] std::optional<Error> writePNG(const std::string& path) const;

private:
    QImage image_;
    double scale_;
};

}  // namespace vantix
