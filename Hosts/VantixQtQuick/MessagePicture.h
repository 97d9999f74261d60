#pragma once

#include <QImage>
#include <QQuickItem>

namespace vantix::qt {

class MessageSurface;

/// The picture of a message, painted anew only when the message changed; coming and going moves and fades it as it is.
/// Painted on the GUI thread, whatever thread the toolkit renders on.
class MessagePicture final : public QQuickItem {
    Q_OBJECT

public:
    /// The surface outlives this.
    MessagePicture(MessageSurface& surface, QQuickItem& holder);

protected:
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData*) override;

private:
    void place();

    MessageSurface& surface_;
    QImage image_;
    bool isNew_ = false;
};

}  // namespace vantix::qt
