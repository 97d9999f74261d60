#pragma once

#include "VantixQt/Windows/MessageSurface.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

namespace vantix::qt {

/// A message above everything in a window. Hidden until its surface has settled for the first time. GUI thread only.
class MessageWidget final : public QWidget {
    Q_OBJECT

public:
    MessageWidget(QWidget& window, std::unique_ptr<MessageSurface> surface);
    ~MessageWidget() override;

    void leave(std::function<void()> finished);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void settle();
    void takeFocus();
    void giveFocusBack();

    std::unique_ptr<MessageSurface> surface_;
    QPointer<QWidget> focusBefore_;
};

}  // namespace vantix::qt
