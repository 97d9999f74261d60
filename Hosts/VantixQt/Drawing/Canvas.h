#pragma once

#include "DeclarativeUI/DisplayList.h"
#include "Platform/Values/Color.h"
#include "Platform/Values/Geometry.h"
#include "Platform/Values/Result.h"

#include <QImage>

#include <optional>
#include <string>

namespace vantix {

class DisplayListPainter;

/// An opaque picture of a screen in memory. Main thread only.
class Canvas {
public:
    /// `size` in points; `scale` is pixels per point. The background's alpha is ignored.
    Canvas(Size size, double scale, const Color& background = Color::white());

    /// Paints a list over everything so far, as one layer of this opacity (0 to 1).
    void paint(const DisplayList& list, DisplayListPainter& painter, double alpha = 1);

    /// Draws another picture over everything so far, stretched over the frame.
    void draw(const Canvas& picture, const Rect& frame);

    const QImage& image() const { return image_; }

    /// Writes a PNG file over whatever stands there. Returns what went wrong.
    [[nodiscard]] std::optional<Error> writePNG(const std::string& path) const;

private:
    QImage image_;
    double scale_;
};

}  // namespace vantix
