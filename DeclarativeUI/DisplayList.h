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

    bool operator==(const FillRect&) const = default;
};

/// The line runs along the inside of the frame's edge half of its width, and half outside.
struct StrokeRect {
    Rect frame;
    double cornerRadius = 0;
    double lineWidth = 1;
    Color color;

    bool operator==(const StrokeRect&) const = default;
};

/// A filled ellipse that touches the frame's four edges.
struct FillEllipse {
    Rect frame;
    Color color;

    bool operator==(const FillEllipse&) const = default;
};

/// Its line lies as that of a StrokeRect.
struct StrokeEllipse {
    Rect frame;
    double lineWidth = 1;
    Color color;

    bool operator==(const StrokeEllipse&) const = default;
};

/// One line of text; `origin` is the left end of its baseline.
struct DrawText {
    Point origin;
    std::string text;
    Font font;
    Color color;
    bool rightToLeft = false;

    bool operator==(const DrawText&) const = default;
};

/// A picture stretched over the frame; a tint replaces its colours and keeps its shape.
struct DrawImage {
    Rect frame;
    Image image;
    std::optional<Color> tint;

    bool operator==(const DrawImage&) const = default;
};

/// Everything up to the matching PopClip is drawn only inside this rectangle with rounded corners.
struct PushClip {
    Rect frame;
    double cornerRadius = 0;

    bool operator==(const PushClip&) const = default;
};

struct PopClip {
    bool operator==(const PopClip&) const = default;
};

using DisplayItem =
    std::variant<FillRect, StrokeRect, FillEllipse, StrokeEllipse, DrawText, DrawImage, PushClip, PopClip>;

/// What a host paints, in order, in points of the window. Font sizes are final: the text scale is applied.
using DisplayList = std::vector<DisplayItem>;

}  // namespace vantix
