#pragma once

class QQuickItem;
class QQuickWindow;

namespace vantix::qt {

/// The item of a modal popup of Qt Quick Controls that is open in the window: of a dialog, a drawer, a menu, which
/// stand in the window's own scene. Null without one.
QQuickItem* modalPopup(const QQuickWindow& window);

}  // namespace vantix::qt
