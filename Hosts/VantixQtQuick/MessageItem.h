#pragma once

#include "VantixQt/Windows/AccessibleMessage.h"
#include "VantixQt/Windows/MessageSurface.h"
#include "VantixQtQuick/KineticScroller.h"
#include "VantixQtQuick/WindowGuard.h"

#include <QPointer>
#include <QQuickItem>

#include <functional>
#include <memory>

namespace vantix::qt {

class QmlParts;

/// A message above everything in a window's scene. Hidden until its surface has settled for the first time. While a
/// message that blocks the application is up, the focus of the window is the message's. GUI thread only.
class MessageItem final : public QQuickItem, private GuardedInput {
    Q_OBJECT

public:
    MessageItem(QQuickWindow& window, std::unique_ptr<MessageSurface> surface, std::shared_ptr<QmlParts> parts);
    ~MessageItem() override;

    /// Gives input and focus back at once; calls back when the message has gone.
    void leave(std::function<void()> finished);
    /// Input and focus are the application's from now on.
    void giveBack();

    /// Where it takes input.
    bool contains(const QPointF& point) const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    AccessibleHolder accessibleHolder();
    void settle();
    void takeFocus();
    void followFocus();

    bool wants(QPointF position) const override { return contains(position); }
    bool blocksApplication() const override { return surface_->blocksApplication(); }
    void pointer(PointerPhase phase, QPointF position, QEvent& event) override;
    void wheel(QEvent& event) override { scroller_.wheel(event); }

    std::shared_ptr<QmlParts> parts_;
    std::unique_ptr<MessageSurface> surface_;
    KineticScroller scroller_;
    AccessibleMessage accessible_;
    std::unique_ptr<WindowGuard> guard_;
    /// In the window's own focus scope.
    QPointer<QQuickItem> focusBefore_;
    QRegion touchRegion_;
};

}  // namespace vantix::qt
