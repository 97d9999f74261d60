#include "VantixQtWidgets/MessageWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollEvent>
#include <QScrollPrepareEvent>
#include <QTouchEvent>
#include <QWheelEvent>
#include <QWindow>

#include <utility>

namespace vantix::qt {

namespace {

/// Points that a wheel scrolls by for each of the platform's lines.
constexpr double lineHeight = 20;
constexpr double wheelStep = 120;

double wheelPoints(const QWheelEvent& event) {
    if (!event.pixelDelta().isNull()) return event.pixelDelta().y();
    return event.angleDelta().y() / wheelStep * QApplication::wheelScrollLines() * lineHeight;
}

/// What the toolkit offers to the parents of a widget that leaves it.
bool wouldReachApplication(const QEvent& event) {
    switch (event.type()) {
        case QEvent::ShortcutOverride:
        case QEvent::ToolTip:
        case QEvent::WhatsThis:
        case QEvent::QueryWhatsThis:
        case QEvent::NativeGesture:
        case QEvent::KeyRelease:
            return true;
        default:
            return false;
    }
}

}  // namespace

MessageWidget::MessageWidget(QWidget& window, std::unique_ptr<MessageSurface> surface)
    : QWidget(&window), surface_(std::move(surface)), accessible_(*surface_, accessibleHolder()) {
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setAttribute(Qt::WA_AcceptTouchEvents);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAcceptDrops(true);
    setCursor(Qt::ArrowCursor);
    setFocusPolicy(surface_->blocksApplication() ? Qt::StrongFocus : Qt::TabFocus);
    setGeometry(window.rect());
    hide();
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, &MessageWidget::followFocus);
    connect(surface_.get(), &MessageSurface::updateNeeded, this, qOverload<>(&QWidget::update));
    connect(surface_.get(), &MessageSurface::moved, this, qOverload<>(&QWidget::update));
    connect(surface_.get(), &MessageSurface::settled, this, &MessageWidget::settle);
}

AccessibleHolder MessageWidget::accessibleHolder() {
    return {.object = this,
            .parent = [this] { return parent(); },
            .window = [this] { return window()->windowHandle(); },
            .position = [this] { return mapToGlobal(QPoint()); },
            .hasFocus = [this] { return hasFocus(); },
            .takeFocus = [this] { setFocus(Qt::OtherFocusReason); }};
}

// Coming and going

void MessageWidget::settle() {
    if (!surface_->blocksApplication()) setMask(surface_->touchRegion());
    if (isVisible() || isLeaving_) return;
    raise();
    show();
    if (surface_->blocksApplication()) {
        focusBefore_ = window()->focusWidget();
        setFocus(Qt::OtherFocusReason);
    }
    surface_->appear();
}

void MessageWidget::leave(std::function<void()> finished) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    giveFocusBack();
    surface_->disappear(std::move(finished));
}

bool MessageWidget::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Resize:
            if (watched == parent()) setGeometry(parentWidget()->rect());
            break;
        case QEvent::ChildAdded:
            if (watched == parent()) stayAbove(static_cast<QChildEvent*>(event)->child());
            break;
        case QEvent::ZOrderChange:
            if (watched->parent() == parent()) stayAbove(watched);
            break;
        default:
            break;
    }
    return false;
}

void MessageWidget::stayAbove(QObject* sibling) {
    bool isMessage = sibling == this || qobject_cast<MessageWidget*>(sibling);
    if (!isMessage && sibling->isWidgetType()) raise();
}

// Focus

void MessageWidget::followFocus(QWidget* old, QWidget* now) {
    if (isLeaving_ || !isVisible()) return;
    if (now == this && old && old->window() == window()) focusBefore_ = old;
    bool isBelow = now && now != this && parentWidget()->isAncestorOf(now);
    if (!isBelow || !surface_->blocksApplication()) return;
    focusBefore_ = now;
    setFocus(Qt::OtherFocusReason);
}

void MessageWidget::giveFocusBack() {
    if (std::exchange(isLeaving_, true)) return;
    setFocusPolicy(Qt::NoFocus);
    if (window()->focusWidget() != this) return;
    if (focusBefore_) focusBefore_->setFocus(Qt::OtherFocusReason);
    if (window()->focusWidget() == this) clearFocus();
}

bool MessageWidget::focusNextPrevChild(bool next) {
    bool isUsed = !isLeaving_ && surface_->interaction().keyDown(next ? Key::next : Key::previous);
    return isUsed || surface_->blocksApplication() || QWidget::focusNextPrevChild(next);
}

void MessageWidget::focusInEvent(QFocusEvent* event) {
    if (event->reason() == Qt::TabFocusReason) surface_->interaction().keyDown(Key::next);
    if (event->reason() == Qt::BacktabFocusReason) surface_->interaction().keyDown(Key::previous);
}

void MessageWidget::focusOutEvent(QFocusEvent*) {
    if (!surface_->blocksApplication()) surface_->interaction().setFocus({});
}

// Picture

void MessageWidget::paintEvent(QPaintEvent*) {
    followScale();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    surface_->paint(painter);
}

void MessageWidget::followScale() {
    if (surface_->traits().scale == devicePixelRatioF()) return;
    SceneTraits traits = surface_->traits();
    traits.scale = devicePixelRatioF();
    surface_->setTraits(traits);
}

// Input

bool MessageWidget::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TouchCancel:
            touch(*static_cast<QTouchEvent*>(event));
            event->accept();
            return true;
        case QEvent::ScrollPrepare:
            prepareScrolling(*static_cast<QScrollPrepareEvent*>(event));
            return true;
        case QEvent::Scroll:
            surface_->scrollTo(static_cast<QScrollEvent*>(event)->contentPos().y());
            return true;
        default:
            break;
    }
    if (surface_->blocksApplication() && wouldReachApplication(*event)) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void MessageWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) pointer(QScroller::InputPress, event->position(), event->timestamp());
}

void MessageWidget::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton) pointer(QScroller::InputMove, event->position(), event->timestamp());
}

void MessageWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) pointer(QScroller::InputRelease, event->position(), event->timestamp());
}

void MessageWidget::touch(const QTouchEvent& event) {
    if (event.type() == QEvent::TouchCancel) return surface_->pointerCancelled();
    const QEventPoint& finger = event.points().first();
    switch (finger.state()) {
        case QEventPoint::Pressed:
            return pointer(QScroller::InputPress, finger.position(), event.timestamp());
        case QEventPoint::Updated:
            return pointer(QScroller::InputMove, finger.position(), event.timestamp());
        case QEventPoint::Released:
            return pointer(QScroller::InputRelease, finger.position(), event.timestamp());
        default:
            return;
    }
}

void MessageWidget::pointer(QScroller::Input input, QPointF position, ulong timestamp) {
    QScroller* scroller = QScroller::scroller(this);
    switch (input) {
        case QScroller::InputPress: {
            // A press that stops the scrolling does nothing else.
            bool wasScrolling = scroller->state() == QScroller::Scrolling;
            scroller->handleInput(input, position, static_cast<qint64>(timestamp));
            if (!wasScrolling) surface_->pointerDown(position);
            break;
        }
        case QScroller::InputMove:
            surface_->pointerMoved(position);
            scroller->handleInput(input, position, static_cast<qint64>(timestamp));
            break;
        case QScroller::InputRelease:
            scroller->handleInput(input, position, static_cast<qint64>(timestamp));
            surface_->pointerUp(position);
            break;
    }
}

void MessageWidget::prepareScrolling(QScrollPrepareEvent& event) const {
    auto scrolled = surface_->content().scrollArea();
    QRectF viewport(scrolled.viewport.origin.x, scrolled.viewport.origin.y, scrolled.viewport.size.width,
                    scrolled.viewport.size.height);
    if (scrolled.range <= 0 || !viewport.contains(event.startPos())) return event.ignore();
    event.setViewportSize(viewport.size());
    event.setContentPosRange(QRectF(0, 0, 0, scrolled.range));
    event.setContentPos(QPointF(0, scrolled.offset));
    event.accept();
}

void MessageWidget::wheelEvent(QWheelEvent* event) {
    QScroller::scroller(this)->stop();
    surface_->scroll(-wheelPoints(*event));
    event->accept();
}

void MessageWidget::keyPressEvent(QKeyEvent* event) {
    bool isUsed = surface_->keyDown(*event);
    event->setAccepted(isUsed || surface_->blocksApplication());
}

}  // namespace vantix::qt
