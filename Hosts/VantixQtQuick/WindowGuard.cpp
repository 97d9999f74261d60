#include "VantixQtQuick/WindowGuard.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTouchEvent>
#include <QWheelEvent>

#include <algorithm>

namespace vantix::qt {

namespace {

bool swallow(QEvent& event) {
    event.accept();
    return true;
}

PointerPhase phaseOf(QEventPoint::State state) {
    switch (state) {
        case QEventPoint::Pressed:
            return PointerPhase::down;
        case QEventPoint::Released:
            return PointerPhase::up;
        default:
            return PointerPhase::move;
    }
}

}  // namespace

WindowGuard::WindowGuard(QQuickWindow& window, QQuickItem& message, GuardedInput& input)
    : window_(window), message_(message), input_(input) {
    qGuiApp->installEventFilter(this);
}

bool WindowGuard::eventFilter(QObject* watched, QEvent* event) { return watched == &window_ && keep(*event); }

bool WindowGuard::keep(QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::MouseButtonRelease:
            return mouse(static_cast<QMouseEvent&>(event));
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TouchCancel:
            return touch(static_cast<QTouchEvent&>(event));
        case QEvent::Wheel:
            if (!input_.wants(static_cast<QWheelEvent&>(event).position())) return false;
            input_.wheel(event);
            return swallow(event);
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
            // What nobody takes comes again as the mouse's.
            if (!input_.wants(static_cast<QSinglePointEvent&>(event).position())) return false;
            event.ignore();
            return true;
        case QEvent::NativeGesture:
            return input_.wants(static_cast<QSinglePointEvent&>(event).position()) && swallow(event);
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            if (!input_.wants(static_cast<QDropEvent&>(event).position())) return false;
            event.ignore();
            return true;
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            if (!input_.blocksApplication()) return false;
            QCoreApplication::sendEvent(&message_, &event);
            return swallow(event);
        case QEvent::ShortcutOverride:
            return input_.blocksApplication() && swallow(event);
        default:
            return false;
    }
}

bool WindowGuard::mouse(QMouseEvent& event) {
    bool begins = event.type() == QEvent::MouseButtonPress && event.buttons() == event.button();
    if (begins) hasMouse_ = input_.wants(event.position());
    if (!hasMouse_) return false;
    if (event.buttons() == Qt::NoButton) {
        hasMouse_ = false;
        if (event.type() == QEvent::MouseMove) return false;
    }
    if (event.type() == QEvent::MouseMove) {
        if (event.buttons().testFlag(Qt::LeftButton)) input_.pointer(PointerPhase::move, event.position(), event);
    } else if (event.button() == Qt::LeftButton && event.type() != QEvent::MouseButtonDblClick) {
        input_.pointer(begins ? PointerPhase::down : PointerPhase::up, event.position(), event);
    }
    return swallow(event);
}

bool WindowGuard::touch(QTouchEvent& event) {
    const auto& points = event.points();
    if (event.type() == QEvent::TouchBegin) {
        hasTouch_ = input_.wants(points.first().position());
        finger_ = points.first().id();
    }
    if (!hasTouch_) return false;
    if (event.type() == QEvent::TouchCancel) {
        input_.pointer(PointerPhase::cancelled, {}, event);
    } else {
        auto first =
            std::find_if(points.begin(), points.end(), [&](const QEventPoint& point) { return point.id() == finger_; });
        if (first != points.end()) input_.pointer(phaseOf(first->state()), first->position(), event);
    }
    if (event.type() == QEvent::TouchEnd || event.type() == QEvent::TouchCancel) hasTouch_ = false;
    return swallow(event);
}

}  // namespace vantix::qt
