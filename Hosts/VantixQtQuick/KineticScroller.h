#pragma once

#include "VantixQtQuick/PointerPhase.h"

#include <QObject>
#include <QPointF>

#include <memory>

class QEvent;
class QQuickItem;

namespace vantix::qt {

class MessageSurface;

/// Scrolls a message as the toolkit scrolls: a Flickable that nobody sees takes the input, and where it moves to the
/// message is scrolled. GUI thread only.
class KineticScroller final : public QObject {
    Q_OBJECT

public:
    /// The surface outlives this. Without a Flickable only keys scroll.
    KineticScroller(MessageSurface& surface, std::unique_ptr<QQuickItem> flickable);
    ~KineticScroller() override;

    /// Whether the content moves on by itself.
    bool isFlicking() const;
    /// The toolkit's mouse or touch event, in points of the surface.
    void pointer(PointerPhase phase, QPointF position, QEvent& event);
    void wheel(QEvent& event);

signals:
    /// The movement is a scroll from now on.
    void dragged();

private slots:
    void follow();
    void scroll();

private:
    MessageSurface& surface_;
    std::unique_ptr<QQuickItem> flickable_;
    /// Whether the press began where something scrolls.
    bool isInside_ = false;
};

}  // namespace vantix::qt
