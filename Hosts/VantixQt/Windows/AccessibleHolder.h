#pragma once

#include <QPoint>

#include <functional>

class QObject;
class QWindow;

namespace vantix::qt {

/// What shows a message, a widget or an item, as assistive technology needs to know it. All called on the GUI thread,
/// and no longer than the object lives.
struct AccessibleHolder {
    /// Stands for the message as a whole.
    QObject* object = nullptr;
    /// Whose child the message is; null while there is none.
    std::function<QObject*()> parent;
    /// The window on screen; null while there is none.
    std::function<QWindow*()> window;
    /// Where the surface's origin is on the screen.
    std::function<QPoint()> position;
    std::function<bool()> hasFocus;
    std::function<void()> takeFocus;
};

}  // namespace vantix::qt
