#pragma once

class QQuickWindow;

namespace vantix::qt {

/// Whether a modal popup of Qt Quick Controls is open in the window: a dialog, a drawer, a menu. These stand in the
/// window's own scene.
bool hasModalPopup(const QQuickWindow& window);

}  // namespace vantix::qt
