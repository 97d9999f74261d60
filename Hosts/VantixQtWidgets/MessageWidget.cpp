#include "VantixQtWidgets/MessageWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <utility>

namespace vantix::qt {

MessageWidget::MessageWidget(QWidget& window, std::unique_ptr<MessageSurface> surface)
    : QWidget(&window), surface_(std::move(surface)) {
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setFocusPolicy(surface_->blocksApplication() ? Qt::StrongFocus : Qt::TabFocus);
    setGeometry(window.rect());
    hide();
    window.installEventFilter(this);
    connect(surface_.get(), &MessageSurface::updateNeeded, this, qOverload<>(&QWidget::update));
    connect(surface_.get(), &MessageSurface::settled, this, &MessageWidget::settle);
}

MessageWidget::~MessageWidget() { giveFocusBack(); }

void MessageWidget::settle() {
    if (!surface_->blocksApplication()) setMask(surface_->touchRegion());
    if (isVisible()) return;
    raise();
    show();
    takeFocus();
    surface_->appear();
}

void MessageWidget::takeFocus() {
    if (!surface_->blocksApplication()) return;
    focusBefore_ = window()->focusWidget();
    setFocus(Qt::OtherFocusReason);
}

void MessageWidget::giveFocusBack() {
    if (auto before = std::exchange(focusBefore_, nullptr)) before->setFocus(Qt::OtherFocusReason);
}

void MessageWidget::leave(std::function<void()> finished) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    giveFocusBack();
    surface_->disappear(std::move(finished));
}

bool MessageWidget::event(QEvent* event) {
    // What the message does not use must not become a shortcut of the application below.
    if (event->type() == QEvent::ShortcutOverride && surface_->blocksApplication()) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

bool MessageWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched != parent()) return false;
    if (event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    if (event->type() == QEvent::ChildAdded) raise();
    return false;
}

void MessageWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    surface_->paint(painter);
}

void MessageWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) surface_->pointerDown(event->position());
}

void MessageWidget::mouseMoveEvent(QMouseEvent* event) { surface_->pointerMoved(event->position()); }

void MessageWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) surface_->pointerUp(event->position());
}

void MessageWidget::wheelEvent(QWheelEvent* event) {
    double points = event->pixelDelta().isNull() ? event->angleDelta().y() / 120.0 * 60 : event->pixelDelta().y();
    surface_->scroll(-points);
    event->accept();
}

void MessageWidget::keyPressEvent(QKeyEvent* event) {
    bool isUsed = surface_->keyDown(*event);
    event->setAccepted(isUsed || surface_->blocksApplication());
}

}  // namespace vantix::qt
