#pragma once

#include "VantixQt/Windows/AccessibleMessage.h"
#include "VantixQt/Windows/MessageSurface.h"

#include <QPointer>
#include <QScroller>
#include <QWidget>

#include <functional>
#include <memory>

class QScrollPrepareEvent;
class QTouchEvent;

namespace vantix::qt {

/// A message above everything in a window. Hidden until its surface has settled for the first time. While a message
/// that blocks the application is up, the focus of the window is the message's. GUI thread only.
class MessageWidget final : public QWidget {
    Q_OBJECT

public:
    MessageWidget(QWidget& window, std::unique_ptr<MessageSurface> surface);

    /// The focus goes where it was, from now on the application's.
    void giveFocusBack();
    /// Gives input and focus back at once; calls back when the message has gone.
    void leave(std::function<void()> finished);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    AccessibleHolder accessibleHolder();
    void settle();
    void followFocus(QWidget* old, QWidget* now);
    void stayAbove(QObject* sibling);

    /// The scale of a screen may change under a window.
    void followScale();

    void touch(const QTouchEvent& event);
    void pointer(QScroller::Input input, QPointF position, ulong timestamp);
    void prepareScrolling(QScrollPrepareEvent& event) const;

    std::unique_ptr<MessageSurface> surface_;
    AccessibleMessage accessible_;
    QPointer<QWidget> focusBefore_;
    bool isLeaving_ = false;
};

}  // namespace vantix::qt
