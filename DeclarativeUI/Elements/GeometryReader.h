#pragma once

#include "DeclarativeUI/View.h"

#include <functional>

namespace vantix {

/// What a geometry reader knows when it builds its content.
struct GeometryProxy {
    /// What is offered: of a root, the safe area.
    Size size;
    /// How far the window reaches beyond the safe area.
    EdgeInsets safeArea;

    Size windowSize() const {
        return {size.width + safeArea.left + safeArea.right, size.height + safeArea.top + safeArea.bottom};
    }
};

/// Takes all that is offered and builds its content once it knows how much that is; once per evaluation.
View GeometryReader(std::function<View(const GeometryProxy&)> content);

}  // namespace vantix
