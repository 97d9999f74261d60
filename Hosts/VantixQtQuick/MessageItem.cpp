#include "VantixQtQuick/MessageItem.h"

#include "VantixQtQuick/MessagePicture.h"
#include "VantixQtQuick/QmlParts.h"

#include <QKeyEvent>
#include <QQuickWindow>

#include <limits>
#include <utility>

namespace vantix::qt {

MessageItem::MessageItem(QQuickWindow& window, std::unique_ptr<MessageSurface> surface, std::shared_ptr<QmlParts> parts)
    : parts_(std::move(parts)),
      surface_(std::move(surface)),
      scroller_(*surface_, parts_->makeFlickable(*this)),
      accessible_(*surface_, accessibleHolder()) {
    setParentItem(window.contentItem());
    setSize(window.contentItem()->size());
    setZ(std::numeric_limits<qreal>::max());
    setVisible(false);
    setCursor(Qt::ArrowCursor);
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
    parts_->setAccessibleRole(*this, surface_->blocksApplication() ? QAccessible::Dialog : QAccessible::AlertMessage);
    new MessagePicture(*surface_, *this);
    connect(surface_.get(), &MessageSurface::settled, this, &MessageItem::settle);
    connect(&scroller_, &KineticScroller::dragged, this, [this] { surface_->pointerCancelled(); });
    connect(&window, &QQuickWindow::activeFocusItemChanged, this, &MessageItem::followFocus, Qt::QueuedConnection);
}

MessageItem::~MessageItem() { giveBack(); }

AccessibleHolder MessageItem::accessibleHolder() {
    return {.object = this,
            .parent = [this] { return window(); },
            .window = [this] { return window(); },
            .position = [this] { return mapToGlobal(QPointF()).toPoint(); },
            .hasFocus = [this] { return hasActiveFocus(); },
            .takeFocus = [this] { forceActiveFocus(Qt::OtherFocusReason); }};
}

// Coming and going

void MessageItem::settle() {
    touchRegion_ = surface_->touchRegion();
    if (isVisible() || !window()) return;
    GuardedInput& input = *this;
    guard_ = std::make_unique<WindowGuard>(*window(), *this, input);
    setVisible(true);
    if (surface_->blocksApplication()) takeFocus();
    surface_->appear();
}

void MessageItem::leave(std::function<void()> finished) {
    giveBack();
    surface_->disappear(std::move(finished));
}

void MessageItem::giveBack() {
    if (!std::exchange(guard_, nullptr)) return;
    setAcceptHoverEvents(false);
    bool isFocused = hasFocus();
    setFocus(false, Qt::OtherFocusReason);
    setActiveFocusOnTab(false);
    if (isFocused && focusBefore_) focusBefore_->setFocus(true, Qt::OtherFocusReason);
}

void MessageItem::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange && !data.window) guard_ = nullptr;
    QQuickItem::itemChange(change, data);
}

// Focus

void MessageItem::takeFocus() {
    focusBefore_ = parentItem()->scopedFocusItem();
    forceActiveFocus(Qt::OtherFocusReason);
}

void MessageItem::followFocus() {
    if (!guard_ || !surface_->blocksApplication() || hasFocus() || !parentItem()) return;
    takeFocus();
}

void MessageItem::focusInEvent(QFocusEvent* event) {
    QAccessibleEvent focused(this, QAccessible::Focus);
    QAccessible::updateAccessibility(&focused);
    if (event->reason() == Qt::TabFocusReason) surface_->interaction().keyDown(Key::next);
    if (event->reason() == Qt::BacktabFocusReason) surface_->interaction().keyDown(Key::previous);
}

void MessageItem::focusOutEvent(QFocusEvent*) {
    if (!surface_->blocksApplication()) surface_->interaction().setFocus({});
}

void MessageItem::keyPressEvent(QKeyEvent* event) {
    bool isUsed = surface_->keyDown(*event);
    event->setAccepted(isUsed || surface_->blocksApplication());
}

// Pointer

bool MessageItem::contains(const QPointF& point) const {
    return guard_ && (surface_->blocksApplication() || touchRegion_.contains(point.toPoint()));
}

void MessageItem::pointer(PointerPhase phase, QPointF position, QEvent& event) {
    // A press that stops the scrolling does nothing else.
    bool wasFlicking = scroller_.isFlicking();
    switch (phase) {
        case PointerPhase::down:
            scroller_.pointer(phase, position, event);
            if (!wasFlicking) surface_->pointerDown(position);
            break;
        case PointerPhase::move:
            surface_->pointerMoved(position);
            scroller_.pointer(phase, position, event);
            break;
        case PointerPhase::up:
            scroller_.pointer(phase, position, event);
            surface_->pointerUp(position);
            break;
        case PointerPhase::cancelled:
            scroller_.pointer(phase, position, event);
            surface_->pointerCancelled();
            break;
    }
}

}  // namespace vantix::qt
