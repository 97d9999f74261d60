#pragma once

#include "VantixQtQuick/PointerPhase.h"

#include <QObject>
#include <QPointF>

class QEvent;
class QMouseEvent;
class QQuickItem;
class QQuickWindow;
class QTouchEvent;

namespace vantix::qt {

/// What a guard keeps for the message. Positions are in points of the window's scene.
class GuardedInput {
public:
    virtual bool wants(QPointF position) const = 0;
    /// Keys and shortcuts are the message's, too.
    virtual bool blocksApplication() const = 0;
    /// The first finger, the left button. The event is the toolkit's, for whoever understands it.
    virtual void pointer(PointerPhase phase, QPointF position, QEvent& event) = 0;
    virtual void wheel(QEvent& event) = 0;

protected:
    ~GuardedInput() = default;
};

/// Keeps a window's input for a message while it lives. It stands before the scene, since pointer handlers, shortcuts
/// and whatever grabbed the input there hear of what an item above them accepts. Movement without a button goes on to
/// the scene, where the topmost item is hovered and gives the pointer its shape.
class WindowGuard final : public QObject {
    Q_OBJECT

public:
    /// `message` is the item that takes keys. All outlive this.
    WindowGuard(QQuickWindow& window, QQuickItem& message, GuardedInput& input);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool keep(QEvent& event);
    bool mouse(QMouseEvent& event);
    bool touch(QTouchEvent& event);

    QQuickWindow& window_;
    QQuickItem& message_;
    GuardedInput& input_;
    /// Whether what began with a press, or with the first finger, is the message's, to its end.
    bool hasMouse_ = false;
    bool hasTouch_ = false;
    int finger_ = 0;
};

}  // namespace vantix::qt
