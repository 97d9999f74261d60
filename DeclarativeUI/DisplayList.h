#pragma once

#include "Platform/Values/Color.h"
#include "Platform/Values/Font.h"
#include "Platform/Values/Geometry.h"
#include "Platform/Values/Image.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantix {

/// A filled rectangle with rounded corners.
struct FillRect {
    Rect frame;
    double cornerRadius = 0;
    Color color;
};

/// The line runs along the inside of the frame's edge half of its width, and half outside.
struct StrokeRect {
    Rect frame;
    double cornerRadius = 0;
    double lineWidth = 1;
    Color color;
};

/// A filled ellipse that touches the frame's four edges.
struct FillEllipse {
    Rect frame;
    Color color;
};

/// Its line lies as that of a StrokeRect.
struct StrokeEllipse {
    Rect frame;
    double lineWidth = 1;
    Color color;
};

/// One line of text; `origin` is the left end of its baseline.
struct DrawText {
    Point origin;
    std::string text;
    Font font;
    Color color;
    bool rightToLeft = false;
};

/// A picture stretched over the frame; a tint replaces its colours and keeps its shape.
struct DrawImage {
    Rect frame;
    Image image;
    std::optional<Color> tint;
};

/// Everything up to the matching PopClip is drawn only inside this rectangle with rounded corners.
struct PushClip {
    Rect frame;
    double cornerRadius = 0;
};

struct PopClip {};

using DisplayItem =
    std::variant<FillRect, StrokeRect, FillEllipse, StrokeEllipse, DrawText, DrawImage, PushClip, PopClip>;

/// What a host paints, in order, in points of the window. Font sizes are final: the text scale is applied.
using DisplayList = std::vector<DisplayItem>;

}  // namespace vantix
