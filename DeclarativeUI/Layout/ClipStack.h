#pragma once

#include "Platform/Values/Geometry.h"

#include <vector>

namespace vantix {

/// The clips that stand around what is being placed, and what they leave of it.
class ClipStack {
public:
    explicit ClipStack(const Rect& window) : clips_{{window, 0, window}} {}

    void push(const Rect& frame, double cornerRadius) { clips_.push_back({frame, cornerRadius, visiblePart(frame)}); }
    void pop() { clips_.pop_back(); }

    /// What the clips leave of the window.
    const Rect& visible() const { return clips_.back().visible; }
    /// What the clips leave of the frame.
    Rect visiblePart(const Rect& frame) const { return frame.intersection(clips_.back().visible); }
    /// Whether the frame meets or touches what the clips leave.
    bool isVisible(const Rect& frame) const;
    /// The radius to which this very frame is being clipped; 0 for any other.
    double cornerRadiusOf(const Rect& frame) const;

private:
    struct Clip {
        Rect frame;
        double cornerRadius = 0;
        /// What remains visible inside this clip and those around it.
        Rect visible;
    };
    std::vector<Clip> clips_;
};

}  // namespace vantix
