#pragma once

class QQuickItem;
class QQuickWindow;

namespace vantix::qt {

/// The item of a popup of Qt Quick Controls that is open in the window and waits for an answer: of a modal dialog or
/// drawer, a menu, a combo box, which stand in the window's own scene. Null without one.
QQuickItem* waitingPopup(const QQuickWindow& window);

}  // namespace vantix::qt
